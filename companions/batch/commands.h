// The commands, each in a source of its own. They work through the banks of the call and leave the results in the
// context.
#pragma once

#include "batch/context.h"

class Keeping;

void ListBanks(Context& context);
void CheckBanks(Context& context, Keeping& keeping);
void CreateMaps(Context& context, Keeping& keeping);
void ConvertMaps(Context& context, Keeping& keeping);
void ShiftMaps(Context& context, Keeping& keeping);
void SetKeys(Context& context, Keeping& keeping);
void WriteReport(Context& context);
void ExportCurves(Context& context);
void ImportCurves(Context& context, Keeping& keeping);
void RestoreMaps(Context& context, Keeping& keeping);
