#include "driver/journey.h"

#include <cstdio>

#include "driver/screen.h"

namespace {

constexpr UINT kCheckMs = 5'000;

void Say(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

}  // namespace

bool Journey::Run(const char* name, const std::filesystem::path& folder, bool withPictures) {
  const ULONGLONG start = GetTickCount64();
  Say(name);
  folder_ = folder;
  bank_ = folder / L"voicebank";
  withPictures_ = withPictures;
  try {
    if (std::filesystem::exists(folder)) throw std::runtime_error("there is something already where it would go");
    WriteSampleBank(bank_);
    ForgetSettings();
    SetEnvironmentVariableW(L"LOCALAPPDATA", (folder / L"local").c_str());
    Travel();
  } catch (const std::exception& fault) {
    Say(std::string("      WRONG: ") + fault.what());
    wrong_ = true;
    ShootNow("wrong", "The screen then");
  }
  Kill();
  Say("  " + std::to_string((GetTickCount64() - start) / 1000) + " s");
  return !wrong_;
}

void Journey::Leave() {
  PressInEditor(L"Ctrl+q");
  Check("the program ends", [this] { return EndsWell(); });
}

void Journey::Shoot(const char* name, const char* text) {
  if (withPictures_) Screen::AtRest();
  ShootNow(name, text);
}

void Journey::ShootNow(const char* name, const char* text) {
  char numbered[64];
  std::snprintf(numbered, sizeof(numbered), "%02d-%s.png", ++pictures_, name);
  Say(std::string("  ") + numbered + "  " + text);
  if (withPictures_) Screen::Now().Save(folder_ / numbered);
}

void Journey::Check(const std::string& text, const std::function<bool()>& holds) {
  const bool isSo = Eventually(holds, kCheckMs);
  Say((isSo ? "      ok: " : "      WRONG: ") + text);
  wrong_ |= !isSo;
}

void Journey::CheckChanged(const char* text, const std::wstring& names) {
  std::wstring changed;
  Check(text, [&] { return (changed = ChangedFiles(before_, FilesIn(bank_))) == names; });
  if (changed == names) return;
  const std::u8string shown = std::filesystem::path(changed).u8string();
  Say("      changed: " + std::string(shown.begin(), shown.end()));
}

Bytes Journey::Now(const std::wstring& name) const {
  return ReadFile(bank_ / name);
}

void Journey::CheckFrame(const char* text, const std::wstring& map, std::size_t frame, double hz) {
  Check(text, [&] { return FrequencyOf(Now(map), frame) == hz; });
}

void Journey::CheckOnlyFrames(const char* text, const std::wstring& map, std::size_t first, std::size_t last) {
  Check(text, [&] { return OnlyFramesChanged(Before(map), Now(map), first, last); });
}
