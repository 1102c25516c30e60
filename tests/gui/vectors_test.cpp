// The share of the families in expected.json that shows in the windows.
#include <sstream>

#include "gui/program.h"
#include "native/family.h"

namespace {

using testdata::Json;
using testdata::Utf8;
using vectors = ProgramTest;

TEST_F(vectors, Rows) {
  Family family("rows");
  std::filesystem::current_path(testdata::Path(Family::Folder()));
  Start(L"");
  List().OpenFolder(L"voice");
  std::istringstream column(Utf8(Column(0)));
  Json rows;
  for (std::string row; std::getline(column, row, '|');) rows.push_back(row);
  family.Expect(rows, family.Entries());
}

TEST_F(vectors, Captions) {
  Family family("captions");
  std::filesystem::current_path(testdata::Path(Family::Folder()));
  Start(L"");
  for (const Json& test : family.Entries()) {
    List().OpenFolder(testdata::Wide(test["folder"]).c_str());
    family.Expect(Utf8(WindowText(editor_)), test["caption"]);
  }
}

TEST_F(vectors, WaveInformation) {
  Family family("waves");
  std::filesystem::current_path(testdata::Path(Family::Folder()));
  Start(L"");
  for (const Json& test : family.Entries()) {
    EditorSender(editor_).SetSyllable(testdata::Wide(test["file"]).c_str());
    family.Expect(Utf8(WindowText(Item(IDC_EDITOR_WAVEINFO))), test["information"]);
  }
}

}  // namespace
