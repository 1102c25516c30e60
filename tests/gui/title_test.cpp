// The title names the voicebank: by its own word for itself, or else by its folder.
#include "gui/program.h"
#include "native/vectors.h"

namespace {

using Title = ProgramTest;

TEST_F(Title, NamesEveryVoicebankThatIsOpened) {
  std::filesystem::current_path(MARLIT_TEST_DATA);
  Start(L"");
  const vectors::Json expected = vectors::Json::parse(vectors::OpenData("texts.json"));
  for (const vectors::Json& test : expected["captions"]) {
    List().OpenFolder(vectors::Wide(test["folder"]).c_str());
    EXPECT_EQ(WindowText(editor_), vectors::Wide(test["caption"])) << test["folder"];
  }
}

}  // namespace
