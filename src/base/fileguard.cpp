#include "base/fileguard.h"

namespace {

class NoGuard : public FileGuard {
 public:
  void Begin(const FileChange&) override {}
  void End() override {}
  bool Wants(const std::wstring&) override { return false; }
  bool Keep(const std::wstring&, ByteSpan) override { return true; }
};

NoGuard noGuard;
FileGuard* present = &noGuard;

}  // namespace

FileGuard& PresentGuard() {
  return *present;
}

void SetPresentGuard(FileGuard* guard) {
  present = guard ? guard : &noGuard;
}
