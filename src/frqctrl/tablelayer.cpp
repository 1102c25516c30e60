#include "frqctrl/tablelayer.h"

#include <utility>

#include "frqctrl/layerevictionlist.h"

void TableLayer::GiveUp() {
  dc_.reset();
  picture_ = {};
}

bool TableLayer::Build(HDC dc, const RECT& client, const std::function<void(HDC, PixelBitmap&)>& draw) {
  MemoryDc layer(CreateCompatibleDC(dc));
  const int width = client.right - client.left;
  const int height = client.bottom - client.top;
  if (!picture_.Is(width, height)) {
    picture_ = {};  // ahead of the new one, so that both are never held
    picture_ = PixelBitmap(width, height);
  }
  if (!layer || !picture_) return false;
  {
    const SelectGuard selectBitmap(layer.get(), picture_.get());
    const SelectGuard selectFont(layer.get(), GetCurrentObject(dc, OBJ_FONT));
    draw(layer.get(), picture_);
  }
  dc_ = std::move(layer);
  return true;
}

void TableLayer::CopyTo(HDC dc, const RECT& client) const {
  const SelectGuard selectBitmap(dc_.get(), picture_.get());
  BitBlt(dc, 0, 0, client.right - client.left, client.bottom - client.top, dc_.get(), 0, 0, SRCCOPY);
}

void TableLayer::SetList(LayerEvictionList* list) {
  if (!list || LayerEvictionList::IsOne(list)) list_ = list;
}

void TableLayer::Enter(HWND control) const {
  if (list_) list_->Add(control);
}

void TableLayer::Leave(HWND control) const {
  if (list_) list_->Remove(control);
}
