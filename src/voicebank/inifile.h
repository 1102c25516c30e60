// UtauCommon::INIFILE: the key=value files of a voicebank and of the host (character.txt, setting.ini). Portable but
// for Load.
#pragma once

#include <map>
#include <string>

#include "voicebank/textlines.h"

namespace UtauCommon {

class INIFILE {
 public:
  // Always 0: a file that cannot be read changes nothing. An empty path means the host's setting.ini, or the copy of it
  // that the system keeps for this user if that is newer.
  int Load(const std::wstring& path);
  // Adds these lines. A later value of the same key replaces the earlier one; a section's name has no meaning.
  void Parse(const LineSource& next);

  // The value of a key; `defaultText` only if the key is absent, not if its value is empty.
  std::wstring GetValue(const std::wstring& key, const std::wstring& defaultText) const;

 private:
  std::map<std::wstring, std::wstring> values_;
};

}  // namespace UtauCommon
