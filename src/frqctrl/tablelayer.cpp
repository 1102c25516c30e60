#include "frqctrl/tablelayer.h"

#include <utility>

#include "frqctrl/layerevictionlist.h"

void TableLayer::GiveUp() {
  Dc.reset();
  Picture = {};
}

bool TableLayer::Build(HDC dc, const RECT& client, const std::function<void(HDC, PixelBitmap&)>& draw) {
  MemoryDc layer(CreateCompatibleDC(dc));
  const int width = client.right - client.left;
  const int height = client.bottom - client.top;
  if (!Picture.Is(width, height)) {
    Picture = {};  // ahead of the new one, so that both are never held
    Picture = PixelBitmap(width, height);
  }
  if (!layer || !Picture) return false;
  {
    const SelectGuard selectBitmap(layer.get(), Picture.get());
    const SelectGuard selectFont(layer.get(), GetCurrentObject(dc, OBJ_FONT));
    draw(layer.get(), Picture);
  }
  Dc = std::move(layer);
  return true;
}

void TableLayer::CopyTo(HDC dc, const RECT& client) const {
  const SelectGuard selectBitmap(Dc.get(), Picture.get());
  BitBlt(dc, 0, 0, client.right - client.left, client.bottom - client.top, Dc.get(), 0, 0, SRCCOPY);
}

void TableLayer::SetList(LayerEvictionList* list) {
  if (!list || LayerEvictionList::IsOne(list)) List = list;
}

void TableLayer::Enter(HWND control) const {
  if (List) List->Add(control);
}

void TableLayer::Leave(HWND control) const {
  if (List) List->Remove(control);
}
