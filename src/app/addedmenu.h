// The items that stand behind those of the menus as users know them: commands for daily work, each with its key.
#pragma once

#include <windows.h>

// Appends the items of IDR_ADDEDMENU to the menus of the bar, below a line of their own.
void AppendAddedItems(HMENU bar);
