#include "resampler/playmci.h"

#include <mmsystem.h>

#include <cwchar>

#include "base/guardedcall.h"
#include "base/narrowpath.h"

namespace {

constexpr UINT kAnswerSize = 32;

struct MciCall {
  const wchar_t* Command;
  wchar_t* Answer;
};

// Drivers of others stand behind the device: one that raises an exception has failed like one that gives an error.
DWORD SendGuarded(const std::wstring& command, wchar_t* answer = nullptr) {
  MciCall call{command.c_str(), answer};
  const auto send = [](void* argument) -> DWORD {
    const auto* const sent = static_cast<const MciCall*>(argument);
    return mciSendStringW(sent->Command, sent->Answer, sent->Answer ? kAnswerSize : 0, nullptr);
  };
  return CallGuarded(send, &call);
}

}  // namespace

DWORD PlayMci(const std::wstring& path, int from, int endTrim, const std::wstring& alias) {
  // Drivers take it in the user's code page.
  const std::wstring file = NarrowForm(path).value_or(path);
  if (const DWORD error = SendGuarded(L"open \"" + file + L"\" alias " + alias)) return error;
  wchar_t answer[kAnswerSize] = L"";
  if (const DWORD error = SendGuarded(L"status " + alias + L" length", answer)) return error;
  const int length = static_cast<int>(std::wcstol(answer, nullptr, 10));
  const int to = endTrim < 0 ? from - endTrim : length - endTrim;
  return SendGuarded(L"play " + alias + L" from " + std::to_wstring(from < 0 ? 0 : from) + L" to " +
                     std::to_wstring(to));
}

bool IsMciPlaying(const std::wstring& alias) {
  wchar_t mode[kAnswerSize] = L"";
  mciSendStringW((L"status " + alias + L" mode").c_str(), mode, kAnswerSize, nullptr);
  return mode == std::wstring(L"playing");
}

DWORD CloseMci(const std::wstring& alias) {
  return mciSendStringW((L"close " + alias).c_str(), nullptr, 0, nullptr);
}
