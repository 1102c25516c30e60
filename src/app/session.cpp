#include "app/session.h"

#include <windows.h>

#include "base/systempath.h"

Session::Session(Document& maps)
    : Safety(Disk(), LocalProgramFolder(L"Recovery"), GetCurrentProcessId()), maps_(maps) {}

void Session::Start() {
  Safety.Start();
  SetPresentGuard(&Safety);
  if (const std::wstring path = Safety.JournalPath(); !path.empty()) journal_.emplace(maps_, Disk(), path);
}

void Session::End() {
  GiveUpEdits();
  SetPresentGuard(nullptr);
  Safety.Close();
}

void Session::GiveUpEdits() {
  if (journal_) journal_->Close(true);
}

void Session::BeginJournal(const std::wstring& folder, FrqType kind) {
  const std::lock_guard lock(mutex_);
  if (journal_) journal_->Begin({kind, folder, resampler_, Recovery::PresentTime()});
}

void Session::SetResampler(const std::wstring& path) {
  const std::lock_guard lock(mutex_);
  resampler_ = path;
}

bool Session::IsJournalWritten() {
  return journal_ && journal_->Flush();
}
