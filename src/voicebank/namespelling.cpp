#include "voicebank/namespelling.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr wchar_t kFirstKana = 0x3041, kLastKana = 0x3096;  // of hiragana
constexpr wchar_t kFirstKatakana = 0x30A1, kLastKatakana = 0x30F6;
constexpr wchar_t kFirstNarrowKana = 0xFF66, kLastNarrowKana = 0xFF9D;
constexpr wchar_t kLongMark = 0x30FC;
constexpr wchar_t kSmallTsu = 0x3063;
constexpr wchar_t kDoubled = 1;  // stands for a small tsu until it is known what follows

// The kana of half width, from kFirstNarrowKana on.
constexpr wchar_t kNarrowKana[] =
    L"をぁぃぅぇぉゃゅょっーあいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりるれろわん";
static_assert(std::size(kNarrowKana) - 1 == kLastNarrowKana - kFirstNarrowKana + 1);

// The letters that are typed for each hiragana, from kFirstKana on.
constexpr std::array<const wchar_t*, kLastKana - kFirstKana + 1> kTyped = {
    L"xa", L"a",  L"xi", L"i",  L"xu",  L"u",   L"xe",  L"e",  L"xo",  L"o",  L"ka",  L"ga", L"ki", L"gi", L"ku",
    L"gu", L"ke", L"ge", L"ko", L"go",  L"sa",  L"za",  L"si", L"zi",  L"su", L"zu",  L"se", L"ze", L"so", L"zo",
    L"ta", L"da", L"ti", L"di", L"xtu", L"tu",  L"du",  L"te", L"de",  L"to", L"do",  L"na", L"ni", L"nu", L"ne",
    L"no", L"ha", L"ba", L"pa", L"hi",  L"bi",  L"pi",  L"hu", L"bu",  L"pu", L"he",  L"be", L"pe", L"ho", L"bo",
    L"po", L"ma", L"mi", L"mu", L"me",  L"mo",  L"xya", L"ya", L"xyu", L"yu", L"xyo", L"yo", L"ra", L"ri", L"ru",
    L"re", L"ro", L"xwa", L"wa", L"wi", L"we",  L"wo",  L"n",  L"vu",  L"xka", L"xke"};

bool IsKana(wchar_t c) {
  return c >= kFirstKana && c <= kLastKana;
}

bool IsOneOf(wchar_t c, std::wstring_view letters) {
  return letters.find(c) != letters.npos;
}

bool IsVowel(wchar_t c) {
  return IsOneOf(c, L"aiueo");
}

bool IsConsonant(wchar_t c) {
  return c >= L'a' && c <= L'z' && !IsVowel(c);
}

bool IsBetween(wchar_t c, wchar_t first, wchar_t last) {
  return c >= first && c <= last;
}

wchar_t Lower(wchar_t c) {
  const bool isUpper = IsBetween(c, L'A', L'Z') || (IsBetween(c, 0xC0, 0xDE) && c != 0xD7) ||
                       IsBetween(c, 0x391, 0x3A9) || IsBetween(c, 0x410, 0x42F);
  return static_cast<wchar_t>(isUpper ? c + 0x20 : c);
}

wchar_t OneWidth(wchar_t c) {
  if (IsBetween(c, 0xFF01, 0xFF5E)) return static_cast<wchar_t>(c - 0xFEE0);
  if (IsBetween(c, kFirstNarrowKana, kLastNarrowKana)) return kNarrowKana[c - kFirstNarrowKana];
  if (IsBetween(c, kFirstKatakana, kLastKatakana)) return static_cast<wchar_t>(c - kFirstKatakana + kFirstKana);
  return c < 0x20 || c == 0x3000 ? L' ' : c;
}

// The distance from a kana to its form with a voicing mark, 0 for one that has none. Names that come from another
// system may hold the mark as a character of its own, and kana of half width always have it so.
int StepToVoiced(wchar_t kana, wchar_t mark) {
  const bool isHalf = mark == 0x309A || mark == 0xFF9F;
  if (!isHalf && mark != 0x3099 && mark != 0xFF9E) return 0;
  if (IsOneOf(kana, L"はひふへほ")) return isHalf ? 2 : 1;
  if (isHalf) return 0;
  if (kana == L'う') return 0x3094 - L'う';
  return IsOneOf(kana, L"かきくけこさしすせそたちつてと") ? 1 : 0;
}

// A small vowel or a small ya, yu, yo behind another kana makes one syllable with it.
void Join(std::wstring& typed, wchar_t small) {
  const std::wstring own = kTyped[static_cast<std::size_t>(small - kFirstKana)];
  const bool isY = own.size() == 3;
  const wchar_t vowel = own.back();
  if (typed.empty() || !IsVowel(typed.back()) || (!isY && typed.back() == vowel)) {
    typed += typed.empty() || !IsVowel(typed.back()) ? own : std::wstring(1, vowel);
    return;
  }
  const wchar_t replaced = typed.back();
  typed.pop_back();
  const wchar_t first = typed.empty() ? L' ' : typed.back();
  const bool isU = replaced == L'u';
  if (isU && first == L'h') typed.back() = L'f';
  if (isY || (replaced == L'i' && vowel == L'e')) {
    typed += L'y';
  } else if (isU && first == L't') {
    typed += L's';
  } else if (isU && (!IsConsonant(first) || IsOneOf(first, L"kg"))) {
    typed += L'w';
  }
  typed += vowel;
}

std::wstring TypedKana(std::wstring_view plain) {
  std::wstring typed;
  for (std::size_t i = 0; i < plain.size(); ++i) {
    const wchar_t c = plain[i];
    if (c == kLongMark) {
      typed += L'-';
    } else if (c == kSmallTsu) {
      typed += kDoubled;
    } else if (!IsKana(c)) {
      typed += c;
    } else if (i > 0 && IsKana(plain[i - 1]) && IsOneOf(c, L"ぁぃぅぇぉゃゅょ")) {
      Join(typed, c);
    } else {
      typed += kTyped[static_cast<std::size_t>(c - kFirstKana)];
    }
  }
  return typed;
}

// Behind the last kana of a name, or before a vowel, a small tsu doubles nothing.
std::wstring WithDoubled(const std::wstring& typed) {
  std::wstring text;
  for (std::size_t i = 0; i < typed.size(); ++i) {
    const wchar_t next = i + 1 < typed.size() ? typed[i + 1] : L' ';
    if (typed[i] != kDoubled) {
      text += typed[i];
    } else if (IsConsonant(next) && !IsOneOf(next, L"nx")) {
      text += next;
    } else {
      text += L"xtu";
    }
  }
  return text;
}

// One of two ways to write the same: of `From`, `Taken` letters become `To` where one of the letters in `Before`
// follows. An empty `Before` fits whatever follows, and "$" the end of a typed text.
struct Spelling {
  std::wstring_view from;
  std::wstring_view before;
  std::wstring_view to;
  std::size_t taken;
};

// The spelling that fits first is taken.
constexpr Spelling kSpellings[] = {
    {L"shi", L"", L"si", 3},   {L"sh", L"aueo", L"sy", 2}, {L"sh", L"$", L"s", 2},    {L"tch", L"", L"t", 1},
    {L"cc", L"", L"t", 1},     {L"chi", L"", L"ti", 3},    {L"ch", L"aueo", L"ty", 2}, {L"ch", L"$", L"t", 2},
    {L"c", L"$", L"t", 1},     {L"tsu", L"", L"tu", 3},    {L"ts", L"$", L"t", 2},    {L"ltu", L"", L"x", 1},
    {L"lts", L"", L"x", 1},    {L"fu", L"", L"hu", 2},     {L"ffu", L"", L"h", 1},    {L"f", L"$", L"", 1},
    {L"ji", L"", L"zi", 2},    {L"jy", L"", L"zy", 2},     {L"j", L"aueo", L"zy", 1}, {L"j", L"j", L"z", 1},
    {L"j", L"$", L"z", 1},     {L"dzu", L"", L"zu", 3},    {L"di", L"", L"zi", 2},    {L"du", L"", L"zu", 2},
    {L"dy", L"", L"zy", 2},    {L"n'", L"aiueoy", L"n", 2}};

bool Fits(const Spelling& spelling, std::wstring_view text, bool isTyped) {
  if (!text.starts_with(spelling.from)) return false;
  if (spelling.before.empty()) return true;
  const std::wstring_view rest = text.substr(spelling.from.size());
  return rest.empty() ? isTyped && spelling.before == L"$" : IsOneOf(rest.front(), spelling.before);
}

// "nn" is one n that stands by itself, except where the second n begins a syllable.
bool IsSyllabicN(std::wstring_view text) {
  return text.starts_with(L"nn") && (text.size() == 2 || !IsOneOf(text[2], L"aiueoy"));
}

}  // namespace

std::wstring PlainSpelling(std::wstring_view text) {
  std::wstring plain;
  plain.reserve(text.size());
  for (const wchar_t c : text) {
    const int step = plain.empty() ? 0 : StepToVoiced(plain.back(), c);
    if (step > 0) {
      plain.back() = static_cast<wchar_t>(plain.back() + step);
    } else {
      plain += Lower(OneWidth(c));
    }
  }
  return plain;
}

bool HasKana(std::wstring_view plain) {
  for (const wchar_t c : plain) {
    if (IsKana(c) || c == kLongMark) return true;
  }
  return false;
}

std::wstring RomajiSpelling(std::wstring_view plain, bool isTyped) {
  const std::wstring typed = WithDoubled(TypedKana(plain));
  std::wstring romaji;
  for (std::wstring_view rest = typed; !rest.empty();) {
    std::size_t taken = 1;
    const auto* const found =
        std::ranges::find_if(kSpellings, [&](const Spelling& each) { return Fits(each, rest, isTyped); });
    if (found != std::end(kSpellings)) {
      romaji += found->to;
      taken = found->taken;
    } else if (IsSyllabicN(rest)) {
      romaji += L'n';
      taken = 2;
    } else {
      const bool isLong = rest.front() == L'-' && !romaji.empty() && IsVowel(romaji.back());
      romaji += isLong ? romaji.back() : rest.front();
    }
    rest.remove_prefix(taken);
  }
  return romaji;
}
