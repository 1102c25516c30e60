// A library of the right name in which there is nothing to call.
namespace {
[[maybe_unused]] constexpr int kNothing = 0;
}
