// The page with its style and its script, as the build has put it together of the files under page/.
//
// A name in double braces stands where a text or a part of the page comes in.
#pragma once

#include <string_view>

std::string_view PageTemplate();
