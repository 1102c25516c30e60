#include "frqmap/vslib.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "base/guardedcall.h"
#include "base/inplace.h"
#include "base/narrowpath.h"
#include "frqmap/mapfiles.h"

namespace {

constexpr std::int32_t kMostItems = 10'000;
constexpr int kNoExtension = 1;

template <typename Function>
void Resolve(HMODULE module, const char* name, Function*& entry) {
  entry = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// A path as the library opens it. None for a file that it would take for another one, or not find.
std::optional<std::string> LibraryPath(const std::wstring& path) {
  std::optional<std::string> bytes = NarrowBytes(path);
  if (!bytes) SetLastError(ERROR_BAD_PATHNAME);
  return bytes;
}

// The place of a new project. A file that is not there has no short name yet: where the library cannot take its own
// name, an empty file is made first, and goes again if nothing is written.
class NewProject {
 public:
  explicit NewProject(const std::wstring& path) : path_(path) {
    if (FileExists(path) || NarrowForm(path)) return;
    isAhead_ = Disk().Open(path, FileMode::Patch) != nullptr;
  }
  ~NewProject() {
    const std::optional<FileFacts> facts = isAhead_ ? Disk().FactsOf(path_) : std::nullopt;
    if (facts && facts->Size == 0) Disk().Delete(path_);
  }
  NewProject(const NewProject&) = delete;
  NewProject& operator=(const NewProject&) = delete;

 private:
  const std::wstring path_;
  bool isAhead_ = false;
};

// The path with `ending` for its extension and the dot; none without a dot. One in a folder's name counts.
std::optional<std::wstring> WithEnding(const std::wstring& path, std::wstring_view ending) {
  const std::size_t dot = path.rfind(L'.');
  if (dot == path.npos) return std::nullopt;
  return path.substr(0, dot).append(ending);
}

bool AreCountsSane(const std::vector<VsItemInfo>& items) {
  std::int64_t total = 0;
  for (const VsItemInfo& item : items) {
    if (item.PointCount < 0) return false;
    total += item.PointCount;
  }
  return total <= VsMostPoints;
}

bool PutBack(const FileChange& change) {
  const std::unique_ptr<FileStream> file = Disk().Open(change.Path, FileMode::Patch);
  return file && TakeBack(*file, change);
}

// Nobody knows what the library does to the file: the whole of it is held meanwhile, and put back if the save fails.
int SaveGuarded(CVsLib& library, const std::wstring& path) {
  PresentGuard().Mend(path);
  std::optional<Bytes> before = ReadWholeFile(path);
  if (!before) return library.SaveProject(path);
  if (!before->empty() && PresentGuard().Wants(path)) PresentGuard().Keep(path, *before);
  const std::int64_t size = std::ssize(*before);
  const FileChange change{path, size, size, {{0, *std::move(before), {}}}, true};
  PresentGuard().Begin(change);
  SetLastError(ERROR_SUCCESS);
  const int result = library.SaveProject(path);
  const DWORD error = GetLastError();
  if (result == 0 || PutBack(change)) PresentGuard().End();
  SetLastError(result != 0 && error == ERROR_SUCCESS ? DWORD{ERROR_WRITE_FAULT} : error);
  return result;
}

}  // namespace

bool CanLibraryOpen(const std::wstring& path) {
  return LibraryPath(path).has_value();
}

VsHelper& VsHelper::Shared() {
  static VsHelper helper;
  return helper;
}

VsHelper::~VsHelper() {
  if (Module) FreeLibrary(Module);
}

DWORD VsHelper::Load() {
  const std::lock_guard lock(loading_);
  if (Module) return 0;
  const HMODULE module = LoadLibraryW(L"vslib.dll");
  if (!module) return GetLastError();
  Module = module;
  ResolveEntries();
  return 0;
}

void VsHelper::ResolveEntries() {
  Resolve(Module, "_VslibCreateProject@4", VslibCreateProject);
  Resolve(Module, "_VslibOpenProject@8", VslibOpenProject);
  Resolve(Module, "_VslibSaveProject@8", VslibSaveProject);
  Resolve(Module, "_VslibDeleteProject@4", VslibDeleteProject);
  Resolve(Module, "_VslibGetProjectInfo@8", VslibGetProjectInfo);
  Resolve(Module, "_VslibGetTrackMaxNum@8", VslibGetTrackMaxNum);
  Resolve(Module, "_VslibGetItemMaxNum@8", VslibGetItemMaxNum);
  Resolve(Module, "_VslibAddItemEx@24", VslibAddItemEx);
  Resolve(Module, "_VslibGetItemInfo@12", VslibGetItemInfo);
  Resolve(Module, "_VslibGetCtrlPntInfoEx@16", VslibGetCtrlPntInfoEx);
  Resolve(Module, "_VslibSetCtrlPntInfoEx@16", VslibSetCtrlPntInfoEx);
  Resolve(Module, "_SetPrjSaveOption@8", SetPrjSaveOption);
}

// Closes the project at the end of an operation, however that ends.
class CVsLib::Closer {
 public:
  explicit Closer(CVsLib& library) : library_(library) {}
  ~Closer() { library_.CloseProject(); }
  Closer(const Closer&) = delete;
  Closer& operator=(const Closer&) = delete;

 private:
  CVsLib& library_;
};

CVsLib::CVsLib() : library_(VsHelper::Shared().Load() == 0 ? &VsHelper::Shared() : nullptr) {}

CVsLib::~CVsLib() {
  CloseProject();
}

// A missing entry fails like a call that the library refuses. Where the library fails over a project, all that the
// project held is lost.
template <typename Entry, typename... Arguments>
int CVsLib::Call(Entry VsHelper::*entry, Arguments... arguments) {
  if (!library_ || !(library_->*entry) || hasCrashed_) return -1;
  int result = -1;
  if (HasReturned([&] { result = (library_->*entry)(arguments...); })) return result;
  hasCrashed_ = true;
  Handle = 0;
  return -1;
}

// A project that was open is closed, and the library may be asked for another one.
void CVsLib::Begin() {
  CloseProject();
  hasCrashed_ = false;
}

int CVsLib::OpenProject(const std::wstring& path) {
  Begin();
  const std::optional<std::string> libraryPath = LibraryPath(path);
  return libraryPath ? KeepIfOpened(Call(&VsHelper::VslibOpenProject, &Handle, libraryPath->c_str())) : -1;
}

// A call that fails may leave anything in the handle.
int CVsLib::KeepIfOpened(int result) {
  if (result != 0) Handle = 0;
  return result;
}

int CVsLib::OpenAndRead(const std::wstring& path) {
  if (const int result = OpenProject(path); result != 0) return result;
  if (const int result = ReadItems(); result != 0) return result;
  if (const int result = ReadControlPoints(); result != 0) return result;
  return hasCrashed_ ? -1 : 0;
}

int CVsLib::SaveProject(const std::wstring& path) {
  const std::optional<std::string> libraryPath = LibraryPath(path);
  return libraryPath ? Call(&VsHelper::VslibSaveProject, Handle, libraryPath->c_str()) : -1;
}

void CVsLib::CloseProject() {
  if (Handle != 0 && Call(&VsHelper::VslibDeleteProject, Handle) == 0) Handle = 0;
}

int CVsLib::ReadItems() {
  Items.clear();
  if (!library_) return -1;
  std::int32_t count = 0;
  if (Call(&VsHelper::VslibGetItemMaxNum, Handle, &count) != 0) return 0;
  if (count > kMostItems) return -1;
  for (std::int32_t i = 0; i < count; ++i) {
    VsItemInfo item;
    if (Call(&VsHelper::VslibGetItemInfo, Handle, i, &item) == 0) Items.push_back(item);
  }
  return 0;
}

int CVsLib::ReadControlPoints() {
  ControlPoints.clear();
  if (!library_ || !AreCountsSane(Items)) return -1;
  for (const VsItemInfo& item : Items) {
    const auto number = static_cast<std::int32_t>(ControlPoints.size());
    std::vector<VsControlPoint>& points = ControlPoints.emplace_back();
    for (std::int32_t i = 0; i < item.PointCount; ++i) {
      VsControlPoint point;
      if (Call(&VsHelper::VslibGetCtrlPntInfoEx, Handle, number, i, &point) == 0) points.push_back(point);
    }
  }
  return 0;
}

int CVsLib::WriteControlPoints() {
  std::int32_t item = 0;
  wasPointRefused_ = false;
  for (const std::vector<VsControlPoint>& points : ControlPoints) {
    std::int32_t index = 0;
    for (const VsControlPoint& point : points) {
      if (Call(&VsHelper::VslibSetCtrlPntInfoEx, Handle, item, index++, &point) == 0) continue;
      wasPointRefused_ = true;
      break;
    }
    ++item;
  }
  return 0;
}

int CVsLib::ReadProjectInfo() {
  ProjectInfo = {};
  return Call(&VsHelper::VslibGetProjectInfo, Handle, &ProjectInfo);
}

int CVsLib::CreateFile(const std::wstring& wavePath, int lowestNote, int range, bool useMap, FrqType mapKind,
                       MrqStore* store) {
  const std::optional<std::wstring> target = WithEnding(wavePath, L"_wav.vs4ufrq");
  if (!target) return kNoExtension;
  const std::optional<std::string> libraryPath = LibraryPath(wavePath);
  if (!libraryPath) return -1;
  Begin();
  const Closer closer(*this);
  if (const int result = KeepIfOpened(Call(&VsHelper::VslibCreateProject, &Handle)); result != 0) return result;
  std::int32_t item = 0;
  const int added = Call(&VsHelper::VslibAddItemEx, Handle, libraryPath->c_str(), &item, lowestNote, range, 0);
  if (added != 0) return added;
  if (useMap) ImportMap(MapPathFromWaveW(wavePath, mapKind), store);
  Call(&VsHelper::SetPrjSaveOption, Handle, 1);
  const NewProject made(*target);
  SaveProject(*target);
  return 0;
}

int CVsLib::ImportMap(const std::wstring& mapPath, MrqStore* store) {
  FrqMap map;
  if (map.Load(mapPath, store) != 0) return -1;
  if (ReadItems() != 0 || ReadProjectInfo() != 0 || ReadControlPoints() != 0) return -1;
  return SampleOntoProject(map, *this) ? WriteControlPoints() : -1;
}

int CVsLib::ExportMap(const std::wstring& vsPath, FrqType kind, MrqStore* store) {
  const Closer closer(*this);
  if (OpenAndRead(vsPath) != 0 || ReadProjectInfo() != 0) return -1;
  std::optional<FrqMap> map = ResampledMap(*this, kind);
  if (!map) return -1;
  map->Save(MapPathFromWaveW(WavePathFromMapW(vsPath), kind), store);
  return 0;
}

int CVsLib::ExportPmk(const std::wstring& vsPath) {
  const std::optional<std::wstring> target = WithEnding(vsPath, L".pmk");
  const Closer closer(*this);
  if (!target || OpenAndRead(vsPath) != 0 || ReadProjectInfo() != 0) return -1;
  std::optional<Bytes> file = PmkOfProject(*this);
  if (!file) return -1;
  // A file that a full disk cuts short counts as written, as an exported map does.
  return WriteInPlace(Disk(), *target, *std::move(file)) || GetLastError() == ERROR_DISK_FULL ? 0 : -1;
}

int LoadVs4ufrq(FrqMap& map, const std::wstring& path) {
  CVsLib library;
  const int result = library.OpenAndRead(path);
  if (result != 0) return result;
  std::optional<FrqMap> loaded = MapOfProject(std::move(library));  // the data alone, not what is open
  if (!loaded) return -1;
  map = std::move(*loaded);
  return 0;
}

// A project that a full disk has cut short may open as one without points: points are refused then, and must be, or the
// next save would count as one that has kept the edits.
int SaveVs4ufrq(const FrqMap& map, const std::wstring& path) {
  CVsLib library;
  if (const int result = library.OpenProject(path); result != 0) return result;
  library.ControlPoints = map.Project.ControlPoints;
  library.WriteControlPoints();
  if (library.WasPointRefused()) {
    SetLastError(ERROR_WRITE_FAULT);
    return -1;
  }
  return SaveGuarded(library, path);
}
