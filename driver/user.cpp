#include "driver/user.h"

#include <commctrl.h>

#include <cstdlib>
#include <stdexcept>
#include <tuple>

#include "base/registry.h"
#include "base/text.h"
#include "driver/mapfiles.h"
#include "driver/screen.h"
#include "resources/ids.h"

const DialogKind kQuestion{0xFFFF, L"Static"};
const DialogKind kOption{IDC_OPTION_RESAMPLER, L"ComboBox"};
const DialogKind kConvert{IDC_CONVERT_ALL, L"Button"};
const DialogKind kCreating{IDC_CREATEFRQ_PROGRESS, PROGRESS_CLASSW};
const DialogKind kCheck{IDC_CHECK_TRANSITION, L"Button"};
const DialogKind kModifyBar{IDC_MODIFY_MODIFYALL, L"Button"};
const DialogKind kWarning{IDC_VIRTUALSTORE_LINK, L"SysLink"};
const DialogKind kFolderDialog{0x480, L"Edit"};  // edt1 of the system's own dialogs
const DialogKind kThumbnails{IDC_THUMBNAIL_NONE, L"Static"};
const DialogKind kAbout{IDC_ABOUT_NAME, L"Static"};
const DialogKind kRangeOfAnalysis{IDC_VS4UFRQ_USEFRQ, L"Button"};
const DialogKind kInitializeMrq{IDC_INITMRQ_BOTH, L"Button"};
const DialogKind kKeptMaps{IDC_KEPTFILES_LIST, WC_LISTVIEWW};
const DialogKind kMapChanged{IDC_MAPCHANGED_OVERWRITE, L"Button"};

namespace {

constexpr wchar_t kSettingsKey[] = L"Software\\UTAU Plugin";
constexpr wchar_t kResamplerValue[] = L"Resampler";
constexpr DWORD kGlanceMs = 100;
constexpr UINT kFocusMs = 1'000;
using ResamplerBlock = wchar_t[MAX_PATH];

bool IsInMenu(DWORD thread) {
  GUITHREADINFO info{};
  info.cbSize = sizeof(info);
  return GetGUIThreadInfo(thread, &info) && (info.flags & GUI_INMENUMODE);
}

}  // namespace

User::~User() {
  Kill();
}

std::filesystem::path ProgramFolder() {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::filesystem::path(path).parent_path();
}

void ForgetSettings() {
  RegDeleteTreeW(HKEY_CURRENT_USER, kSettingsKey);
}

void ChooseResampler(const std::filesystem::path& resampler) {
  ResamplerBlock block = L"";
  resampler.wstring().copy(block, MAX_PATH - 1);
  RegWriteValue(kResamplerValue, block);
}

bool IsResamplerChosen() {
  ResamplerBlock block = L"";
  return RegReadValue(kResamplerValue, block);
}

void User::StartOnly(const std::filesystem::path& program, const std::filesystem::path& argument) {
  const std::wstring quoted = argument.empty() ? L"" : L" \"" + argument.wstring() + L"\"";
  editor_ = list_ = nullptr;
  std::tie(process_, id_) = StartProgram(L"\"" + program.wstring() + L"\"" + quoted, nullptr);
}

void User::Start(const std::filesystem::path& program, const std::filesystem::path& argument) {
  StartOnly(program, argument);
  FindMainWindows();
}

void User::FindMainWindows() {
  Await("both windows", [this] {
    editor_ = FindDialogOf(id_, WC_LISTBOXW, IDC_EDITOR_FRAMES);
    list_ = FindDialogOf(id_, WC_LISTVIEWW, IDC_LIST_FILES);
    return editor_ && list_;
  });
  AwaitAnswer();
  // On the small screen of no display the list lies over the editor, and a click on that does not bring it up.
  RECT common, editor = RectOf(editor_), list = RectOf(list_);
  if (IntersectRect(&common, &editor, &list)) DragBelowEditor(list_);
}

bool User::GoesOn() const {
  return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT && IsWindowVisible(editor_);
}

void User::Kill() {
  if (!process_) return;
  TerminateProcess(process_.get(), 1);
  WaitForSingleObject(process_.get(), limitMs);
  process_.reset();
}

HWND User::Table() const {
  return Item(IDC_EDITOR_TABLE);
}

HWND User::Dialog(const DialogKind& kind) const {
  HWND found = nullptr;
  Await("a dialog", [&] { return (found = FindDialogOf(id_, kind.ControlClass, kind.Control, editor_)) != nullptr; });
  Eventually([&] { return GetForegroundWindow() == found; }, kFocusMs);
  return found;
}

void User::AwaitEndOf(const DialogKind& kind, UINT limit) const {
  Await("the end of a dialog", [&] { return !FindDialogOf(id_, kind.ControlClass, kind.Control, editor_); }, limit);
  AwaitAnswer();
}

void User::Await(const char* what, const std::function<bool()>& state, UINT limit) {
  if (!Eventually(state, limit)) throw std::runtime_error(std::string("not in time: ") + what);
}

void User::AwaitAnswer() const {
  for (const HWND window : {list_, editor_}) SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, limitMs, nullptr);
}

std::wstring User::TextOf(HWND window) {
  std::wstring text(1024, L'\0');
  text.resize(static_cast<std::size_t>(
      SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::wstring User::FrameText(int frame) const {
  wchar_t text[64] = L"";
  SendMessageW(Item(IDC_EDITOR_FRAMES), LB_GETTEXT, static_cast<WPARAM>(frame), reinterpret_cast<LPARAM>(text));
  return text;
}

int User::FrameCount() const {
  return static_cast<int>(SendMessageW(Item(IDC_EDITOR_FRAMES), LB_GETCOUNT, 0, 0));
}

int User::RowCount() const {
  return static_cast<int>(SendDlgItemMessageW(list_, IDC_LIST_FILES, LVM_GETITEMCOUNT, 0, 0));
}

int User::SelectedRow() const {
  return static_cast<int>(
      SendDlgItemMessageW(list_, IDC_LIST_FILES, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

void User::Front(HWND window) const {
  Await("a window that takes a click", [=] { return IsWindowEnabled(window); });
  if (GetForegroundWindow() != window) Click(PlaceIn(window, 200, 10));
  Await("a window in front", [=] { return GetForegroundWindow() == window; });
}

void User::DragBelowEditor(HWND window) const {
  const POINT from = PlaceIn(window, 50, 10);
  const LONG bottom = RectOf(editor_).bottom;
  Drag({from, {from.x - 10, bottom + 10}, {from.x, bottom + 20}});
  Await("a window below the editor", [=] { return RectOf(window).top > bottom; });
}

void User::PressInEditor(std::wstring_view keys) const {
  ToEditor();
  Press(keys);
}

void User::Menu(std::wstring_view keys) const {
  const DWORD thread = GetWindowThreadProcessId(editor_, nullptr);
  // Where the display hands the focus on in its own time, that may come behind the key and take the menu away again.
  const auto stays = [=] { return IsInMenu(thread) && (Sleep(kGlanceMs), IsInMenu(thread)); };
  Await("the menu", [=, this] { return PressInEditor(L"F10"), Eventually(stays, kFocusMs); });
  Press(keys);
}

void User::TypeOver(const std::wstring& text) {
  Press(L"Home Shift+End BackSpace");
  Type(text);
}

void User::ClickFrames() const {
  Click(PlaceIn(Item(IDC_EDITOR_FRAMES), 60, 54));
}

void User::GoTo(int row) const {
  ToEditor();
  ClickFrames();
  const int steps = row - SelectedRow();
  if (steps != 0) Press((steps > 0 ? L"Ctrl+Down*" : L"Ctrl+Up*") + std::to_wstring(std::abs(steps)));
  Await("the row", [=, this] { return SelectedRow() == row; });
  AwaitAnswer();
}

void User::SelectFrames(int first, int more) const {
  ToEditor();
  const HWND frames = Item(IDC_EDITOR_FRAMES);
  ClickFrames();
  Press(L"Home");
  if (first > 0) Press(L"Down*" + std::to_wstring(first));
  if (more > 0) Press(L"Shift+Down*" + std::to_wstring(more));
  Await("selected frames", [=] {
    return SendMessageW(frames, LB_GETSELCOUNT, 0, 0) == more + 1 &&
           SendMessageW(frames, LB_GETSEL, static_cast<WPARAM>(first + more), 0) > 0;
  });
}

void User::SetFrame(int frame, double hz) const {
  const std::wstring text = FormatText(L"%.8f", hz);
  SelectFrames(frame);
  const HWND box = Item(IDC_EDITOR_FREQUENCY);
  Click(MiddleOf(box));
  TypeOver(text);
  Await("what is typed", [&] { return TextOf(box) == text; });
  Press(L"Alt+t");
  Await("the frame", [&] { return FrameText(frame) == text; });
}

void User::CreateMissingMaps(const std::filesystem::path& bank) const {
  Menu(L"e m");
  Await("all maps", [&] { return MapsAreThere(bank); });
  ToEditor();
}

void User::Enlarge(int dx, int dy) const {
  const RECT old = RectOf(editor_);
  const POINT from{old.right - 2, old.bottom - 2}, to{old.right + dx, old.bottom + dy};
  Drag({from, {(from.x + to.x) / 2, (from.y + to.y) / 2}, to});
  Await("a larger window", [&] { return RectOf(editor_).right > old.right; });
}

HWND User::TypeOptions(const std::filesystem::path& resampler, const std::wstring& workers) const {
  Menu(L"t o");
  const HWND dialog = Dialog(kOption);
  Press(L"Alt+r");
  TypeOver(resampler.wstring());
  if (!workers.empty()) {
    Press(L"Alt+m");
    TypeOver(workers);
  }
  Await("the path", [&] { return TextOf(GetDlgItem(dialog, IDC_OPTION_RESAMPLER)) == resampler.wstring(); });
  return dialog;
}
