#include "window/controltexts.h"

#include <algorithm>

std::span<const ControlText> ControlTextsOf(int form) {
  const HRSRC resource = FindResourceW(nullptr, MAKEINTRESOURCEW(form), L"TIPS");
  if (!resource) return {};
  const auto* const records = static_cast<const ControlText*>(LockResource(LoadResource(nullptr, resource)));
  return {records, SizeofResource(nullptr, resource) / sizeof(ControlText)};
}

const ControlText* ControlTextOf(std::span<const ControlText> texts, int control) {
  const auto found = std::ranges::find(texts, control, &ControlText::Control);
  return found == texts.end() ? nullptr : &*found;
}
