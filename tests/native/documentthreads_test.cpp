// The document under four threads, as in the program: the editor's, the list's, that of the thumbnails, and the one
// that writes the journal. A build with ThreadSanitizer runs it.

#include <random>
#include <thread>

#include "document/documentediting.h"
#include "document/journal.h"
#include "faultdisk.h"
#include "memoryfiles.h"

namespace {

constexpr int kEntries = 6;
constexpr int kRounds = 3000;

struct Program {
  // Strokes and steps back, and paints the shown map.
  void Edit() {
    DocumentEditing editing(document_);
    std::mt19937 random(1);
    for (int round = 0; round < kRounds; ++round) {
      const int index = static_cast<int>(random() % kEntries);
      document_.SetCurrent(index);
      document_.EnsureLoaded(index, Document::OnFailure::EmptySaved);
      FrqMap* const map = document_.Maps(index).Map;
      editing.BeginStroke(*map, StrokeKind::Draw);
      for (int i = 0; i < 4; ++i) editing.SetFrequency(*map, i, 100.0 + round % 50);
      if (round % 2 == 0) editing.EndStroke();
      if (round % 3 == 0) document_.Undo();
      if (round % 6 == 0) document_.Redo();
      Paint(map);
    }
  }

  // Loads, saves, reads again, marks, and opens another folder.
  void List() {
    std::mt19937 random(2);
    SyllableEntries old;
    for (int round = 0; round < kRounds; ++round) {
      const int index = static_cast<int>(random() % kEntries);
      std::uint32_t error = 0;
      switch (random() % 8) {
        case 0: document_.EnsureLoaded(index, Document::OnFailure::KeepSaved); break;
        case 1: document_.Reload(index, Document::OnFailure::KeepSaved, true); break;
        case 2: document_.ReadAfresh(index, Document::OnFailure::EmptySaved, true); break;
        case 3: document_.ApplyAllMarks(true); break;
        case 4: document_.Change(Gesture::Halve, index, Setting(90.0)); break;
        case 5: document_.Mark(index, Marking(7, 333.0), true); break;
        case 6: round % 20 == 0 ? void(old = OpenAgain()) : document_.SetEdited(index, true); break;
        default: document_.Save(index, true, error) == 0 ? document_.RenewSaved(index) : void(); break;
      }
    }
  }

  // Copies maps, and hands over what it has read itself.
  void Thumbnails() {
    for (int round = 0; round < kRounds; ++round) {
      const int index = round % kEntries;
      FrqMap map;
      const EntryFacts facts = document_.Facts(index);
      if (!document_.CopyMap(index, map)) document_.Adopt(index, facts.Path, map = PlainMap(20), 7);
      EXPECT_EQ(map.Frames.size(), 20u);
    }
  }

  void ExpectWhole() {
    ExpectCounts(document_);
    for (int index = 0; index < kEntries; ++index) document_.Reload(index, Document::OnFailure::EmptySaved, true);
    EXPECT_EQ(document_.State().Edited, 0);
    EXPECT_TRUE(journal_.Flush());
    EXPECT_TRUE(ReadJournal(disk_, L"C:\\journal"));
  }

 private:
  SyllableEntries OpenAgain() {
    const std::lock_guard locked(document_);
    SyllableEntries old = document_.Open(found_);
    journal_.Begin({});
    return old;
  }

  // The pointer is one of another folder by now, or the map still stands.
  void Paint(const FrqMap* map) {
    const std::lock_guard locked(document_);
    if (document_.IndexOf(map) < 0) return;
    double sum = 0.0;
    for (const FrqFrame& frame : map->Frames) sum += frame.Frequency;
    EXPECT_TRUE(map->Loaded ? sum > 0.0 : sum == 0.0);
  }

  MemoryFiles files_;
  Document document_{files_};
  const std::vector<FoundSyllable> found_ = OpenMaps(document_, files_, std::vector(kEntries, PlainMap(20)));
  FaultDisk disk_;
  Journal journal_{document_, disk_, L"C:\\journal", std::chrono::milliseconds(1)};
};

TEST(DocumentThreads, EditorListAndThumbnailsWorkOnTheSameMaps) {
  Program program;
  {
    const std::jthread editor([&] { program.Edit(); });
    const std::jthread list([&] { program.List(); });
    program.Thumbnails();
  }
  program.ExpectWhole();
}

}  // namespace
