#include "app/rereading.h"

#include <new>
#include <numeric>

#include "base/text.h"
#include "resources/ids.h"
#include "window/waitcursor.h"

bool Rereading::IsSame(const Done& done, const std::vector<int>& rows) const {
  return done.Index == map_.Index() && done.Rows == rows && done.Map == map_.Frequencies();
}

std::wstring Rereading::Read() {
  std::vector<int> rows = frames_.SelectedRows();
  if (rows.empty()) {
    rows.resize(static_cast<std::size_t>(map_.FrameCount()));
    std::iota(rows.begin(), rows.end(), 0);
  }
  const WaitCursor waiting;
  SoundPitches* const sound = rows.empty() ? nullptr : pitches_.Load(map_.Hop(), map_.FrameCount());
  if (!sound) return LoadResString(IDS_REREAD_NOSOUND);
  const bool again = last_ && IsSame(*last_, rows);
  const OfferedReading reading = NextReading(*sound, rows, again ? std::optional(last_->Which) : std::nullopt);
  frames_.SetFrequencies(Gesture::Reread, rows, reading.hz);
  last_ = Done{reading.which, map_.Index(), rows, map_.Frequencies()};
  if (!reading.HasVoice()) return LoadResString(IDS_REREAD_NOVOICE);
  return LoadResString(IDS_REREAD_FIRST + static_cast<UINT>(reading.which));
}
