// The entries of the desc.mrq files of all folders in use, kept in memory and written through.
//
// Any thread may use a store, and several do: it has locks of its own. They are taken in the order FoldersLock, then
// EntriesLock or FileLock, and never both of these. There may be several stores as well; nothing keeps them in step
// but the files.
//
// A key is the full path of a wave without its extension, compared by code unit: a folder opened under another form of
// its path has other keys. A wave name with a second dot does not survive the file: ka.2.wav has the key ...\ka.2, but
// is written as the entry ka.wav, which reads back under ...\ka. Users' files are like that.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "frqmap/mrqsaving.h"

class MrqStore {
 public:
  // Low 32 bits of the seconds since 1970.
  using Clock = std::int32_t (*)();
  static std::int32_t PresentTime();

  explicit MrqStore(Clock clock = &PresentTime, FileSystem& files = Disk()) : now_(clock), files_(files) {}

  // Reads the folder's file, if there is one, on top of what is kept, and enters the folder. Always 0. A damaged file
  // gives the entries that can be read.
  int LoadFolder(const std::wstring& folder);

  // Makes sure that a new folder has a file, and enters the folder; 0. -1 if it was entered before, or if there can be
  // no file.
  int AddFolder(const std::wstring& folder);

  // Whether the folder was entered by exactly this path.
  bool HasFolder(const std::wstring& folder) const;

  // A copy of the entry, since other threads may be at it; none if there is none.
  std::optional<MrqEntry> Find(const std::wstring& key) const;

  // Sets the entry in memory alone. Always 0.
  int SetEntry(const std::wstring& key, MrqEntry entry);

  // Writes the entry to the file of its folder. 0, or -1 with the reason in Disk().LastError and the entry still in memory.
  int WriteEntry(const std::wstring& key);

  // SetEntry and WriteEntry at once. This very entry is written, even if a thread that loads the folder meanwhile has
  // just put the old one of the file back into memory.
  int SaveEntry(const std::wstring& key, const MrqEntry& entry);

  // Kills the entry in the file of its folder, which is made if there is none, and takes it from memory; deletes the
  // resampler's analysis of the wave. False if the entry is still in the file: then it stays in memory as well.
  bool Remove(const std::wstring& key);
  // Remove for callers that need no answer. Always 0.
  int RemoveEntry(const std::wstring& key);

  // Gives the entry as it lies in its file to the guard, for a resampler that is about to run and may write there.
  // False if there is an entry that has been kept nowhere.
  bool KeepEntry(const std::wstring& key) const;

  // Reads all folders anew.
  void Reload();
  void Clear();

  // Rebuilds the files of all folders without their dead entries. False if one could not be rebuilt, which is as it was
  // then. A file of a newer version is left alone, which is no failure.
  bool CompactFiles();

 private:
  void EnterFolder(const std::wstring& folder);
  int Write(const std::wstring& key, const MrqEntry& entry);

  const Clock now_;
  FileSystem& files_;
  std::map<std::wstring, MrqEntry> Entries;
  std::vector<std::wstring> Folders;
  std::recursive_mutex FileLock;  // from before a file is opened for writing until it is closed
  mutable std::recursive_mutex EntriesLock;
  mutable std::recursive_mutex FoldersLock;
};
