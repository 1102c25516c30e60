// The program around one target, which FUZZ_TARGET names.
#include "base/bytes.h"

void FUZZ_TARGET(ByteSpan input);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FUZZ_TARGET(ByteSpan(data, size));
  return 0;
}
