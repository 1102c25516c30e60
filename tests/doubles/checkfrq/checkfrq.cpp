// A stand-in for the check library, told by the test what to answer. It keeps the settings that it was given, as bytes.
#include <windows.h>

#include <cstring>

#include "doubles/checkfrq/script.h"

namespace {

CheckScript script;

template <typename T>
void Put(unsigned char* record, std::size_t offset, T value) {
  std::memcpy(record + offset, &value, sizeof(value));
}

}  // namespace

extern "C" __declspec(dllexport) CheckScript* Script() {
  return &script;
}

// The offsets are those that any library goes by: the first frame is at 544, and a frame has 40 bytes.
extern "C" __declspec(dllexport) int CheckFrequencyMap(const void* settings, unsigned char* frames,
                                                       const unsigned char*) {
  std::memcpy(script.Settings, settings, sizeof(script.Settings));
  ++script.Calls;
  Sleep(static_cast<DWORD>(script.PauseMs));
  for (const CheckScript::Answer& answer : script.Answers) {
    if (answer.Call != script.Calls) continue;
    unsigned char* const frame = frames + 544 + 40 * answer.Frame;
    Put(frame, 24, answer.Mark);
    Put(frame, 32, answer.Suggested);
  }
  if (script.Calls == script.CrashAt) return *static_cast<volatile int*>(nullptr);
  return script.Calls == script.StopAt ? -1 : 7;
}
