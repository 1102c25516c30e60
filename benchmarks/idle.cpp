// A program that ends at once, in the place of a resampler. It is one with windows, since a console would take longer
// to start.
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, char*, int) {
  return 0;
}
