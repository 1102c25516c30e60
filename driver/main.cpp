// drive journeys [--into FOLDER] [NAME ...]   goes whole ways through the program by keyboard and mouse and looks at
//                                             the files afterwards
// drive tour --into FOLDER [PATH]             shows the program on a copy of the sample voicebank, or opens PATH
// drive pictures --into FOLDER                takes a picture of every window, for the manual
//
// Pictures of the screen and the files stay in the folder; journeys without one leave nothing. Exit code 1 if a check
// fails or a window does not come, 2 for a wrong call.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "driver/journeys.h"
#include "driver/pictures.h"

namespace {

struct Call {
  std::wstring Use;
  std::filesystem::path Into;
  std::vector<std::wstring> Names;
};

Call ReadCall(int count, wchar_t** arguments) {
  Call call;
  if (count > 1) call.Use = arguments[1];
  for (int i = 2; i < count; ++i) {
    if (std::wstring(L"--into") == arguments[i] && i + 1 < count) {
      call.Into = arguments[++i];
    } else {
      call.Names.push_back(arguments[i]);
    }
  }
  return call;
}

int GoOnTour(const Call& call) {
  return MakeTour(call.Names.empty() ? L"" : call.Names[0])->Run("tour", call.Into, true) ? 0 : 1;
}

int GoOnJourneys(const Call& call) {
  const bool stays = !call.Into.empty();
  const std::filesystem::path folder =
      stays ? call.Into
            : std::filesystem::temp_directory_path() / (L"MarlitJourneys" + std::to_wstring(GetCurrentProcessId()));
  int gone = 0, failed = 0;
  for (const NamedJourney& journey : Journeys()) {
    const std::wstring name(journey.Name, journey.Name + std::strlen(journey.Name));
    if (!call.Names.empty() && std::find(call.Names.begin(), call.Names.end(), name) == call.Names.end()) continue;
    ++gone;
    failed += !journey.Make()->Run(journey.Name, folder / name, stays);
  }
  std::error_code unimportant;
  if (!stays) std::filesystem::remove_all(folder, unimportant);
  std::printf("%d of %d journeys went well\n", gone - failed, gone);
  return failed == 0 && gone > 0 ? 0 : 1;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  SetProcessDPIAware();
  limitMs = 30'000;
  const Call call = ReadCall(count, arguments);
  if (call.Use == L"journeys") return GoOnJourneys(call);
  if (call.Use == L"pictures" && !call.Into.empty()) return TakePictures(call.Into) ? 0 : 1;
  if (call.Use == L"tour" && !call.Into.empty()) return GoOnTour(call);
  std::fputs("usage: drive journeys [--into FOLDER] [NAME ...]\n"
             "       drive tour --into FOLDER [PATH]\n"
             "       drive pictures --into FOLDER\n",
             stderr);
  return 2;
}
