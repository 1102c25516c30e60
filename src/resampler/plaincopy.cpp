#include "resampler/plaincopy.h"

#include <windows.h>

#include "base/files.h"
#include "base/filesystem.h"
#include "base/inplace.h"
#include "base/narrowpath.h"
#include "base/path.h"
#include "frqmap/mapfiles.h"
#include "frqmap/mrqmap.h"

std::wstring PlainWaveName(const std::wstring& wave) {
  const std::wstring name = FileNameOf(wave);
  const std::wstring extension = name.substr(PathWithoutExtension(name).size());
  return L"wave" + (IsNarrow(extension) ? extension : L".wav");
}

bool CopyFilePlainly(const std::wstring& from, const std::wstring& to) {
  const std::wstring target = ApiPath(to);
  if (!CopyFileW(ApiPath(from).c_str(), target.c_str(), FALSE)) return false;
  SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
  return true;
}

PlainCopy::PlainCopy(const std::wstring& wave) : wave_(wave) {
  folder_.Make();
  const std::optional<std::wstring> folder = NarrowForm(folder_.Path());
  if (!folder) return;
  const std::wstring copy = PathIn(*folder, PlainWaveName(wave));
  if (CopyFilePlainly(wave, copy)) copy_ = copy;
}

PlainCopy::~PlainCopy() {
  TempFolder::Empty(folder_.Path());
  folder_.Remove();
}

bool PlainCopy::BringMapBack(FrqType kind, MrqStore& store) const {
  if (copy_.empty()) return false;
  BringBack(LlsmPathFromWave(copy_), LlsmPathFromWave(wave_));
  if (kind == FrqTypeMrq) return BringEntryBack(store);
  const std::wstring from = MapPathFromWaveW(copy_, kind), to = MapPathFromWaveW(wave_, kind);
  const std::vector<std::wstring> made = MapCompanions(from), wanted = MapCompanions(to);
  for (std::size_t i = 0; i < made.size(); ++i) BringBack(made[i], wanted[i]);
  return BringBack(from, to);
}

bool PlainCopy::BringBack(const std::wstring& from, const std::wstring& to) {
  std::optional<Bytes> bytes = ReadWholeFile(from);
  return bytes && WriteInPlace(Disk(), to, *std::move(bytes));
}

bool PlainCopy::BringEntryBack(MrqStore& store) const {
  MrqStore made;
  made.LoadFolder(FolderOf(copy_));
  const std::optional<MrqEntry> entry = made.Find(MrqKey(MapPathFromWaveW(copy_, FrqTypeMrq)));
  return entry && store.SaveEntry(MrqKey(MapPathFromWaveW(wave_, FrqTypeMrq)), *entry) == 0;
}
