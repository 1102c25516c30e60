// The road of the voicebank's and the host's text files from the disk into their grammars. It stands apart from them so
// that they stay free of the system.
#include "base/files.h"
#include "base/path.h"
#include "voicebank/folderaccess.h"
#include "voicebank/folderlisting.h"
#include "voicebank/hostfolder.h"
#include "voicebank/inifile.h"
#include "voicebank/libfile.h"
#include "voicebank/notelist.h"
#include "voicebank/otoini.h"

namespace UtauCommon {

int INIFILE::Load(const std::wstring& path) {
  std::wstring file = path;
  if (file.empty()) {
    file = FindHostFolder() + L"\\setting.ini";
    PickNewerVirtualStoreFile(file);
  }
  ParseTextFile(file, CharsetRule::IniFile, [this](const LineSource& next) { Parse(next); });
  return 0;
}

int NOTELIST::Load(const std::wstring& file) {
  Clear();
  if (ParseTextFile(file, CharsetRule::PluginFile, [this](const LineSource& next) { Parse(next); })) path = file;
  return 0;
}

// A path that names nothing is taken for a folder: it has no oto.ini.
int OTOINI::Load(const std::wstring& folderOrFile) {
  Clear();
  if (!FileExists(folderOrFile)) {
    baseFolder = folderOrFile;
    fileName = L"oto.ini";
  } else {
    baseFolder = FolderOf(folderOrFile);
    fileName = FileNameOf(folderOrFile);
  }
  path = baseFolder + L"\\" + fileName;
  const int result = ReadFile(path, {});
  const std::optional<FolderListing> folder = FolderListing::Read(baseFolder);
  if (!folder) return 0;
  for (const std::wstring& subfolder : folder->Folders()) {
    ReadFile(baseFolder + L"\\" + subfolder + L"\\" + fileName, subfolder);
  }
  return result;
}

int OTOINI::ReadFile(const std::wstring& file, const std::wstring& subfolder) {
  const auto parse = [&](const LineSource& next) { Parse(next, subfolder); };
  return ParseTextFile(file, CharsetRule::OtoIni, parse) ? 0 : -1;
}

}  // namespace UtauCommon
