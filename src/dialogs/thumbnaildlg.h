// CThumbnailDlg: every syllable that has a map as a small picture of its curve; a click selects the syllable.
//
// It runs on a thread of its own, which the syllable list starts, and reaches the list through messages alone. It holds
// no pointer to a map of the document's: what is in view is shown from copies, and a map that it reads from its file is
// handed to the document to keep.
//
// The pictures are live controls. They are made when their row first comes into view and stay from then on, hidden
// where they are scrolled away. Maps are read one for each message, so that the window comes up at once on a voicebank
// of thousands.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "app/messages.h"
#include "dialogs/thumbnaillayout.h"
#include "document/document.h"
#include "frqctrl/layerevictionlist.h"
#include "frqmap/frqmap.h"
#include "frqmap/mapediting.h"
#include "resources/ids.h"
#include "window/sharedkeys.h"
#include "window/templatedialog.h"

// One syllable with a map.
struct ThumbnailItem {
  HWND Window = nullptr;    // its control, null until it came into view
  int SyllableIndex = 0;    // in the list
  std::wstring Path;        // of the wave
  FrqMap Map;               // a copy of the document's while the thumbnail is in view, else empty
  bool HasCurve = false;    // Map was loaded when the thumbnail was last drawn
  bool LoadFailed = false;  // the map could not be read, so that it is not tried again
};

class CThumbnailDlg : public CTemplateDlg<CThumbnailDlg, IDD_THUMBNAIL> {
 public:
  // Set before Run: what is shown and where it is read from, the window of the list, the one whose keys act here too,
  // and an event that is set when this window has come, so that the list knows of it.
  Document* Syllables = nullptr;
  DocumentFiles* Files = nullptr;
  HWND Owner = nullptr;
  HWND Commands = nullptr;
  HANDLE ReadyEvent = nullptr;

  LRESULT OnDestroy() override;
  LRESULT OnSize(WPARAM kind, int width, int height) override;
  LRESULT OnVScroll(UINT code, int position, HWND scrollBar) override;
  LRESULT OnMouseWheel(WPARAM keys, int x, int y, int delta) override;
  LRESULT OnExitSizeMove() override;
  LRESULT OnGetMinMaxInfo(MINMAXINFO* info) override;
  LRESULT OnCommand(WPARAM wParam, UINT code, HWND control) override;
  LRESULT OnTimer(UINT_PTR timer, LPARAM lParam) override;
  INT_PTR OnDialogMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  INT_PTR OnInitDialog(LPARAM lParam) override;
  void OnOK() override;
  void OnDialogEnd() override;

 protected:
  std::wstring TipOf(HWND control) const override;

 private:
  // The message that the window posts to itself for the next map to be read.
  static constexpr UINT TNM_LOADNEXT = 32771;

  // The tables show the copies that the window holds, and nothing that somebody else sends them.
  class CopiesOnly : public DirectEditing {
   public:
    explicit CopiesOnly(const std::vector<ThumbnailItem>& items) : items_(items) {}
    bool MayShow(const FrqMap* reference, const FrqMap* map) const override;

   private:
    const std::vector<ThumbnailItem>& items_;
  };

  // Items First to End, the last one exclusive.
  struct ItemRange {
    int First = 0, End = 0;
    bool Contains(int item) const { return item >= First && item < End; }
  };
  static ItemRange ItemsIn(const std::vector<ThumbnailRow>& rows);

  // The layout, from the rows to the controls on the screen.
  int Relayout(bool keepAnchor);
  void FillItems();
  int BuildRows(bool keepAnchor);
  void PlaceRows(int first, int end);
  void ShowItem(int index, int shift);
  void HideItem(ThumbnailItem& item);
  void CreateControl(ThumbnailItem& item);
  void ShowFrom(int row);
  void Forget();

  // The maps in view.
  void CopyMaps(const std::vector<int>& items);
  void PostLoadNext();
  void LoadNext();
  bool LoadItem(ThumbnailItem& item);
  void RefreshItem(int syllable);
  void RefreshAll();

  ThumbnailItem& ItemAt(int item) { return Items[static_cast<std::size_t>(item)]; }
  FileListSender ToList() const { return FileListSender(Owner); }

  std::vector<ThumbnailItem> Items;  // in the order of the list; filled in one go, since the controls point into it
  std::vector<PixelSize> sizes_;     // of the items' windows
  ThumbnailLayout Rows;
  ThumbnailSpacing spacing_;
  int AnchorSyllable = 0;                 // the syllable that the layout keeps at the top
  int TopRow = 0;                         // first row shown
  bool Busy = false;                      // a layout is running: the handlers that would start one return at once
  bool SizeChanged = false;               // a WM_SIZE came since the last end of a size-move
  std::vector<ThumbnailRow> VisibleRows;  // on the screen, their tops as they stand in the window
  CopiesOnly editing_{Items};
  LayerEvictionList Layers;  // the cap on the layers of the thumbnails
  SharedKeys keys_;
};
