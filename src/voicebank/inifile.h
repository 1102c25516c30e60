// UtauCommon::INIFILE: the key=value files of a voicebank and of the host (character.txt, setting.ini).
#pragma once

#include <map>
#include <string>

namespace UtauCommon {

class INIFILE {
 public:
  // Reads a file of code page 932, or of UTF-8 if it begins with that mark. Always 0: a file that cannot be read
  // changes nothing.
  int Load(const std::wstring& path);

  // The value of a key; `defaultText` only if the key is absent, not if its value is empty.
  std::wstring GetValue(const std::wstring& key, const std::wstring& defaultText) const;

 private:
  std::map<std::wstring, std::wstring> values_;
};

}  // namespace UtauCommon
