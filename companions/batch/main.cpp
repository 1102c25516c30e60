// marlit-batch: does with the maps of any number of voicebanks, and without a window, what the windows do with those of
// one.
#include "base/utf8.h"
#include "batch/program.h"

#ifdef _WIN32
// The start-up code is not to look for files behind an argument that holds a "*" or a "?".
extern "C" {
int _dowildcard = 0;
}

int wmain(int count, wchar_t** arguments) {
  std::vector<std::string> words;
  for (int i = 1; i < count; ++i) words.push_back(NameBytesOf(arguments[i]));
  return RunProgram(words);
}
#else
int main(int count, char** arguments) {
  return RunProgram({arguments + (count > 0 ? 1 : 0), arguments + count});
}
#endif
