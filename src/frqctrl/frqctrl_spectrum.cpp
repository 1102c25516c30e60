#include "frqctrl/frqctrl.h"
void CFrqCtrl::DrawSpectrum(PixelBitmap&) {}
