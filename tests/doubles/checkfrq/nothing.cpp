// A library of the right name in which there is nothing to call.
[[maybe_unused]] static constexpr int kNothing = 0;
