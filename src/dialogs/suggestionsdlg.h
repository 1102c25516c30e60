// CSuggestionsDlg: all that Modify All would change, to be looked through before: which frames of which syllable, from
// what to what. A chosen line is shown in the editor.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "resources/ids.h"
#include "window/templatedialog.h"

class CSuggestionsDlg : public CTemplateDlg<CSuggestionsDlg, IDD_SUGGESTIONS> {
 public:
  struct Line {
    std::wstring Syllable, Frames, From, To, Why;
  };

  // Set before Run, which gives IDOK if all is to be modified. Show is called with the number of a line.
  std::vector<Line> Lines;
  HWND List = nullptr;  // the window of the syllables, which is to be seen too
  std::function<void(std::size_t)> Show;

  INT_PTR OnInitDialog(LPARAM lParam) override;
  LRESULT OnNotify(WPARAM wParam, NMHDR* header) override;
};
