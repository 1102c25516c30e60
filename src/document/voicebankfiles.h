// The map files of a voicebank in the kind at work, from which a document loads and to which it saves.
#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <string>

#include "base/filesystem.h"
#include "document/documentfiles.h"
#include "frqmap/mapfault.h"
#include "frqmap/mrqstore.h"

class VoicebankFiles : public DocumentFiles {
 public:
  // The kind at work. The main thread writes it when the resampler changes, which takes effect with the next load.
  std::atomic<FrqType> Kind = FrqTypeFrq;

  // The entries of desc.mrq files, for the kind that keeps its maps there. It has locks of its own.
  MrqStore Store;

  int Load(FrqMap& map, const std::wstring& wavePath) override;
  int Save(FrqMap& map, const std::wstring& wavePath, std::uint32_t& error) override;
  std::uint64_t Stamp(const std::wstring& wavePath) override;
  bool Delete(const std::wstring& wavePath) override;
  void DeleteAnalysis(const std::wstring& wavePath) override;

  // Why the map of a wave cannot be read, by a look at its file now.
  MapFault FaultOf(const std::wstring& wavePath) const;

 private:
  void EnterFolder(const std::wstring& wavePath);
  void LookAtFolder(const std::wstring& wavePath, bool isOwnWrite);

  std::mutex seenLock_;
  std::map<std::wstring, FileFacts> seen_;  // of each desc.mrq as the store knows it, by its folder
};
