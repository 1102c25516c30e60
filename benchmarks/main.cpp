// marlit_bench JSONFILE VOICEBANK [NAME]: measures the rows whose name begins with NAME, or all of them, prints their
// table and adds them to the list in JSONFILE. VOICEBANK is a large one, see rows.h.
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <filesystem>

#include "report.h"
#include "rows.h"

int main(int count, char** arguments) {
  if (count < 3) {
    std::fprintf(stderr, "usage: marlit_bench JSONFILE VOICEBANK [NAME]\n");
    return 2;
  }
  // The table is read on the host system, which ends its lines without a carriage return.
  _setmode(_fileno(stdout), _O_BINARY);
  const std::wstring voicebank = std::filesystem::absolute(arguments[2]).wstring();
  return MeasureAndReport(
      {CheckLibraryRows(), EditorRows(voicebank), ExecutableRows(), FolderRows(voicebank), FrameListRows(),
       GlanceRows(), JobRows(), MapFileRows(), MrqRows(), ResamplerRows(), TableRows(), VoicebankRows()},
      count > 3 ? arguments[3] : "", arguments[1]);
}
