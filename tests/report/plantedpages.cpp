// planted-pages FOLDER: writes the report of a planted bank in both languages, and one of 5,000 syllables, for the
// browser.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <vector>

#include "batch/html.h"
#include "batch/reportpage.h"
#include "frqmap/checkmark.h"

namespace {

constexpr SampleCount kHop = 256;

FrqMap Tone(SampleCount frames, double hz, double depth) {
  FrqMap map;
  map.Create(frames, FrqTypeFrq);
  map.Hop = kHop;
  for (SampleCount i = 0; i < frames; ++i) {
    FrqFrame& frame = map.Frames.Own()[static_cast<std::size_t>(i)];
    const double place = static_cast<double>(i) / frames;
    frame.Amplitude = 6000.0 * std::sin(std::numbers::pi * place);
    if (hz > 0.0 && place > 0.1 && place < 0.9) frame.Frequency = hz * std::exp2(depth * std::sin(i / 4.0) / 12.0);
  }
  map.UpdateFrequencyRange();
  return map;
}

MapFacts FactsOf(const FrqMap& map, double hz) {
  MapFacts facts{FrqTypeFrq, {}, map.FrameCount, map.Hop, 0, hz, 0.0, 0.0};
  for (const FrqFrame& frame : map.Frames) facts.Voiced += frame.Frequency > FrqNoPitch;
  if (facts.Voiced > 0) {
    facts.Low = map.MinFrequency;
    facts.High = map.MaxFrequency;
  }
  return facts;
}

Finding At(SampleCount first, SampleCount last, std::int32_t mark, double from, double to) {
  const double second = static_cast<double>(kHop) / FrqSampleRate;
  return {first, last, first * second, (last + 1) * second, mark, from, to};
}

struct Planted {
  std::wstring Name;
  double Hz = 220.0;
  SampleCount Frames = 172;
  std::vector<Finding> Findings = {};
  MapFault Fault = {};
  bool HasMap = true, HasSound = true;
};

std::vector<Planted> Bank() {
  constexpr std::int32_t kOfAnotherLibrary = 7;
  std::vector<Planted> bank = {
      {.Name = L"あ.wav"},
      {.Name = L"か.wav",
       .Findings = {At(40, 55, CheckMarkOctaveHigh, 440, 220), At(90, 95, CheckMarkNoise, 300, FrqNoPitch)}},
      {.Name = L"<img src=x onerror=alert(1)>&\"'.wav", .Findings = {At(60, 70, CheckMarkTwelfth, 660, 220)}},
      {.Name = L"{{rows}}.wav", .HasMap = false},
      {.Name = L"cut.wav", .Fault = {MapFault::CutShort}},
      {.Name = L"refused.wav", .Fault = {MapFault::Refused, 5}},
      {.Name = L"silent.wav", .Hz = 0.0},
      {.Name = std::wstring(L"byte ") + static_cast<wchar_t>(0xDCFF) + L".wav", .Hz = 110.0},
      {.Name = L"アカ.wav", .Hz = 330.0, .Frames = 90},
      {.Name = L"low\\ra 10.wav", .Hz = 160.0, .Frames = 2000},
      {.Name = L"low\\ra 9.wav", .Hz = 150.0, .Frames = 3, .HasSound = false},
      {.Name = L"all.wav"},
  };
  for (std::int32_t mark = CheckMarkFactor; mark <= CheckMarkLast; ++mark) {
    const SampleCount first = 20 * (mark - CheckMarkFactor);
    bank.back().Findings.push_back(At(first, first + 9, mark, 230, mark == CheckMarkFar ? 0 : 220));
  }
  bank.back().Findings.push_back(At(150, 150, kOfAnotherLibrary, 0, 0));
  return bank;
}

std::vector<Planted> ManySyllables() {
  std::vector<Planted> bank;
  for (int i = 0; i < 5000; ++i) {
    bank.push_back({.Name = L"syllable " + std::to_wstring(i * 7919 % 5000) + L".wav",
                    .Hz = 110.0 * std::exp2(i % 24 / 12.0),
                    .Frames = 200 + i % 120,
                    .HasMap = i % 50 != 0});
    if (i % 10 == 3) bank.back().Findings.push_back(At(50, 70, CheckMarkFactor + i / 10 % 7, 300, 200));
  }
  return bank;
}

void AddTo(ReportPage& page, const Planted& planted, ReportLanguage language) {
  const FrqMap map = Tone(planted.Frames, planted.Hz, 0.3);
  SyllableFacts facts{planted.Name, planted.Frames * static_cast<double>(kHop) / FrqSampleRate, planted.HasSound, {}};
  if (!planted.HasSound) facts.Seconds = 0.0;
  const bool isRead = planted.HasMap && planted.Fault.Why == MapFault::None;
  if (isRead) facts.Maps.push_back(FactsOf(map, planted.Hz));
  if (planted.HasMap && !isRead) facts.Maps.push_back(MapFacts{FrqTypeFrq, planted.Fault, 0, 0, 0, 0.0, 0.0, 0.0});
  facts.Maps.push_back(MapFacts{FrqTypeDio, {}, 0, 0, 0, 0.0, 0.0, 0.0});
  const std::string link = LinkTo(L"..\\" + planted.Name);
  const ReportedSyllable row{planted.Name, link, facts, FrqTypeFrq, isRead ? &map : nullptr, planted.Findings};
  page.Add(MakeReportRow(row, language));
}

bool WritePage(const std::filesystem::path& path, const std::vector<Planted>& bank, ReportLanguage language) {
  std::ofstream file(path, std::ios::binary);
  ReportPage page(file, {L"Planted </title> & bank", FrqTypeFrq, "2024-05-06 07:08", language});
  for (const Planted& planted : bank) AddTo(page, planted, language);
  page.Finish();
  file.close();
  return !file.fail();
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) return 2;
  const std::filesystem::path folder = arguments[1];
  std::filesystem::create_directories(folder);
  const bool isWritten = WritePage(folder / "english.html", Bank(), ReportLanguage::English) &&
                         WritePage(folder / "japanese.html", Bank(), ReportLanguage::Japanese) &&
                         WritePage(folder / "many.html", ManySyllables(), ReportLanguage::English);
  return isWritten ? 0 : 1;
}
