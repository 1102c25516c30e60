// marlit_bench_native JSONFILE COMMAND32 RESAMPLER [NAME]: measures the rows of the portable floor whose name begins
// with NAME, or all of them, prints their table and adds them to the list in JSONFILE. COMMAND32 runs spectrum32.exe,
// RESAMPLER is basic-resampler.exe, which Wine runs in the prefix of the environment.
#include <cstdio>

#include "report.h"
#include "rows.h"

int main(int count, char** arguments) {
  if (count < 4) {
    std::fprintf(stderr, "usage: marlit_bench_native JSONFILE COMMAND32 RESAMPLER [NAME]\n");
    return 2;
  }
  return MeasureAndReport({BatchRows(arguments[3]), CheckRows(), DocumentRows(), NameRows(), PeerRows(),
                           RenderRows(), SpectrumRows(arguments[2])},
                          count > 4 ? arguments[4] : "", arguments[1]);
}
