#include "voicebank/pluginfile.h"

bool IsPluginFile(const std::wstring&) {
  return false;
}
