// CTemplateDlg: a dialog's own answers to its base, where it is made from one template and by default.
#pragma once

#include <memory>

#include "window/dialogbase.h"

template <typename Dialog, int templateId>
class CTemplateDlg : public CDlgBase {
 public:
  std::unique_ptr<CDlgBase> CreateInstance() const override { return std::make_unique<Dialog>(); }
  int GetTemplateId() const override { return templateId; }
};
