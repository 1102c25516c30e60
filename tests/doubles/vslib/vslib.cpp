// A stand-in for the analysis library: twelve entries over project files of its own making.
//
// A file is 1384 bytes of header (the project's record at 0, the count of items at 16, an item's record at 20) and 104
// bytes for each control point, 80 of them its record. Records are bytes here, so that a program that has them wrong
// finds no friend. Further entries tell the test how many projects are open, and let it fill the disk.
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using Project = std::vector<char>;  // the file

constexpr int kItemsAt = 16, kItemAt = 20, kHeaderSize = 1384, kPointSize = 104, kPointsAnalysed = 60;
constexpr int kNoSuchThing = 2;

std::atomic<int> openProjects;
int roomOnDisk = -1;  // bytes that a save may write; any if negative

char* At(Project* project, std::size_t offset) {
  return offset + kPointSize <= project->size() ? project->data() + offset : nullptr;
}

char* PointAt(Project* project, int item, int index) {
  if (item != 0 || index < 0) return nullptr;
  return At(project, kHeaderSize + static_cast<std::size_t>(index) * kPointSize);
}

void Put(Project* project, std::size_t offset, std::int32_t value) {
  std::memcpy(project->data() + offset, &value, sizeof(value));
}

int Copy(void* target, const void* source, std::size_t size) {
  if (!target || !source) return kNoSuchThing;
  std::memcpy(target, source, size);
  return 0;
}

int Open(Project&& project, Project** out) {
  ++openProjects;
  *out = new Project(std::move(project));
  return 0;
}

}  // namespace

extern "C" {

int OpenProjects() {
  return openProjects;
}

int* RoomOnDisk() {
  return &roomOnDisk;
}

int WINAPI VslibCreateProject(Project** out) {
  return Open(Project(kHeaderSize), out);
}

int WINAPI VslibOpenProject(Project** out, const char* path) {
  *out = reinterpret_cast<Project*>(1);  // what a failure leaves there is of no use
  std::ifstream file(path, std::ios::binary);
  return file ? Open(Project(std::istreambuf_iterator<char>(file), {}), out) : kNoSuchThing;
}

int WINAPI VslibSaveProject(Project* project, const char* path) {
  std::ofstream file(path, std::ios::binary);
  const auto size = static_cast<std::streamsize>(project->size());
  const std::streamsize room = roomOnDisk < 0 ? size : roomOnDisk;
  return file.write(project->data(), std::min(size, room)) && room >= size ? 0 : kNoSuchThing;
}

int WINAPI VslibDeleteProject(Project* project) {
  delete project;
  --openProjects;
  return 0;
}

int WINAPI VslibGetProjectInfo(Project* project, void* info) {
  return Copy(info, At(project, 0), 16);
}

int WINAPI VslibGetTrackMaxNum(Project* project, int* count) {
  return Copy(count, At(project, kItemsAt), sizeof(*count));
}

int WINAPI VslibGetItemMaxNum(Project* project, int* count) {
  return Copy(count, At(project, kItemsAt), sizeof(*count));
}

// The analysis: each semitone of the range in turn, and a pitch in every point.
int WINAPI VslibAddItemEx(Project* project, const char* wave, int* item, int lowestNote, int semitones, int zero) {
  if (GetFileAttributesA(wave) == INVALID_FILE_ATTRIBUTES || zero != 0) return kNoSuchThing;
  *item = 0;
  project->resize(kHeaderSize + kPointsAnalysed * kPointSize);
  Put(project, 8, 44100);
  Put(project, kItemsAt, 1);
  Put(project, kItemAt + 272, 200);
  Put(project, kItemAt + 276, kPointsAnalysed);
  for (int i = 0; i < kPointsAnalysed; ++i) {
    const std::size_t point = kHeaderSize + static_cast<std::size_t>(i) * kPointSize;
    Put(project, point + 44, (lowestNote + i % semitones) * 100);
    Put(project, point + 60, 1);
  }
  return 0;
}

int WINAPI VslibGetItemInfo(Project* project, int item, void* info) {
  return Copy(info, item == 0 ? At(project, kItemAt) : nullptr, 292);
}

int WINAPI VslibGetCtrlPntInfoEx(Project* project, int item, int index, void* point) {
  return Copy(point, PointAt(project, item, index), 80);
}

int WINAPI VslibSetCtrlPntInfoEx(Project* project, int item, int index, const void* point) {
  return Copy(PointAt(project, item, index), point, 80);
}

// Kept in the item's record, where a test finds it in the file.
int WINAPI SetPrjSaveOption(Project* project, int option) {
  Put(project, kItemAt + 280, option);
  return 0;
}

}  // extern "C"
