// A program that ends at once, in the place of a resampler. With windows and not with a console, which would take
// longer to start.
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) {
  return 0;
}
