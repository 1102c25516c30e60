#include "resampler/jobsum.h"

JobSum SumOf(const std::vector<WorkItem>& items, const std::vector<ItemResult>& results) {
  JobSum sum;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (results[i].End == ItemEnd::Made) {
      ++sum.Made;
    } else if (results[i].End == ItemEnd::NotReached) {
      ++sum.NotReached;
    } else {
      if (sum.Failed.empty()) sum.First = results[i];
      sum.Failed.push_back(items[i].WavePath);
    }
  }
  return sum;
}
