// Names of notes: what a resampler is told to sing.
#include "resampler/notename.h"

#include <gtest/gtest.h>

#include "native/vectors.h"

namespace {

using vectors::Json;
using vectors::Wide;

TEST(NoteNames, EveryNoteHasItsNameAndEveryNameItsNote) {
  const Json expected = Json::parse(vectors::OpenData("texts.json"));
  for (const Json& test : expected["notes"]["note_name_from_number"]) {
    EXPECT_EQ(NoteNameFromNumber(test["number"]), Wide(test["name"])) << test["number"];
  }
  for (const Json& test : expected["notes"]["note_number_from_name"]) {
    EXPECT_EQ(Json(NoteNumberFromName(Wide(test["name"]))), test["number"]) << test["name"];
  }
  for (const wchar_t* text : {L"C99999999999999999", L"か4", L"-1"}) EXPECT_EQ(NoteNumberFromName(text), -1) << text;
}

}  // namespace
