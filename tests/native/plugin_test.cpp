// Sections that the host would not write, but a broken or hostile project may hold.
#include <gtest/gtest.h>

#include <sstream>

#include "voicebank/notelist.h"

namespace {

TEST(NoteList, LengthsThatAreNoneOrFarTooLongDoNotUpsetTheNumbering) {
  std::wistringstream text(
      L"[#0001]\nLength=99999999999999999999\n[#0002]\nLength=-99999999999\n[#0003]\nLength=0x9\n"
      L"[#INSERT]\nLength=\n[#]\nLength=5\n[#SETTING\nVoiceDir=cut\n[\n[#NEXT]x\n");
  UtauCommon::NOTELIST list;
  list.Parse([&](std::wstring& line) { return !!std::getline(text, line); });
  std::wostringstream found;
  for (const UtauCommon::NOTE& note : list.notes) {
    found << note.GetType() << ' ' << note.index << ' ' << note.position << '|';
    EXPECT_TRUE(!note.next || note.next->prev == &note);
  }
  EXPECT_EQ(found.str(), L"4 0 0|4 1 2147483647|4 2 -1|7 3 -1|0 0 0|0 0 0|0 0 0|0 0 0|");
  EXPECT_EQ(list.GetVoiceDir(), L"") << "the last character of a section's line is never part of its name";
}

}  // namespace
