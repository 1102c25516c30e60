// Rows that show how good something is and not how fast: a figure against what is allowed. It is the same each time and
// found once.
#pragma once

#include <functional>
#include <memory>

#include "rows.h"

class Figure : public Work {
 public:
  Figure(double value, double allowed) : value_(value), allowed_(allowed) {}
  double Measured() override { return value_; }
  double Yardstick() override { return allowed_; }

 private:
  double value_, allowed_;
};

inline Row FigureRow(const char* name, const char* unit, double allowed, std::function<double()> value) {
  return {name, unit, 1.0, [=] { return std::make_unique<Figure>(value(), allowed); }};
}
