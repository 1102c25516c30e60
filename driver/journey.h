// A whole way of a user through the program, in a folder of its own with a fresh copy of the sample voicebank, and what
// is to be seen on it: numbered pictures of the screen, if they are wanted, and checks of what the files hold.
#pragma once

#include "driver/mapfiles.h"
#include "driver/user.h"

class Journey : public User {
 public:
  // In a folder that is not there yet. False if a check has failed, or a window did not come.
  bool Run(const char* name, const std::filesystem::path& folder, bool withPictures);

 protected:
  virtual void Travel() = 0;

  void Open(const std::filesystem::path& argument = {}) { Start(ProgramFolder() / L"marlit.exe", argument); }
  // Ctrl+Q, and the program has nothing to ask.
  void Leave();

  // The screen when it has come to rest, or at once; and a line about it.
  void Shoot(const char* name, const char* text);
  void ShootNow(const char* name, const char* text);

  // Keeps what a journey finds, to compare with.
  void Keep() { before_ = FilesIn(bank_); }
  // Steps wait for what comes about in its own time.
  void Check(const std::string& text, const std::function<bool()>& holds);
  // No other files than these have changed, and all of them.
  void CheckChanged(const char* text, const std::wstring& names);
  // Of a map in the voicebank, before and now.
  const Bytes& Before(const std::wstring& name) const { return before_.at(name); }
  Bytes Now(const std::wstring& name) const;
  void CheckFrame(const char* text, const std::wstring& map, std::size_t frame, double hz);
  void CheckOnlyFrames(const char* text, const std::wstring& map, std::size_t first, std::size_t last);

  std::filesystem::path folder_, bank_;
  Files before_;

 private:
  bool withPictures_ = false;
  int pictures_ = 0;
  bool wrong_ = false;
};
