// The share of the families in expected.json that shows in the windows.

#include "gui/program.h"
#include "native/family.h"
#include "window/keptfolder.h"

namespace {

using testdata::Json, testdata::Utf8;

struct vectors : ProgramTest {
  vectors() {
    std::filesystem::current_path(testdata::Path(Family::Folder()));
    Start(L"");
  }

  const KeptFolder current_;
};

TEST_F(vectors, Rows) {
  Family family("rows");
  List().OpenFolder(L"voice");
  std::istringstream column(Utf8(Column(0)));
  Json rows;
  for (std::string row; std::getline(column, row, '|');) rows.push_back(row);
  family.Expect(rows, family.Entries());
}

TEST_F(vectors, Captions) {
  Family::Each("captions", [this](Family& family, const Json& test) {
    List().OpenFolder(testdata::Wide(test["folder"]).c_str());
    family.Expect(Utf8(WindowText(editor_)), test["caption"]);
  });
}

TEST_F(vectors, WaveInformation) {
  Family::Each("waves", [this](Family& family, const Json& test) {
    EditorSender(editor_).SetSyllable(testdata::Wide(test["file"]).c_str());
    family.Expect(Utf8(WindowText(Item(IDC_EDITOR_WAVEINFO))), test["information"]);
  });
}

}  // namespace
