#include "batch/program.h"

#include <atomic>
#include <cstdio>
#include <exception>
#include <new>

#include "batch/arguments.h"
#include "batch/commands.h"
#include "batch/keeping.h"
#include "batch/machine.h"

namespace {

std::atomic<bool> stop = false;

// Whether a command writes maps. One that does not leaves kept maps alone.
bool Writes(const Order& call) {
  return !call.IsDryRun && (call.What != Command::Check || call.Fixes);
}

void RunCommand(Context& context) {
  if (context.Call.What == Command::List) return ListBanks(context);
  if (context.Call.What == Command::Export) return ExportCurves(context);
  if (context.Call.What == Command::Report) return WriteReport(context);
  Keeping keeping(Writes(context.Call) ? context.Call.KeepsOld ? Keeping::Old : Keeping::Nothing : Keeping::Unused);
  switch (context.Call.What) {
    case Command::Check: CheckBanks(context, keeping); break;
    case Command::Create: CreateMaps(context, keeping); break;
    case Command::Convert: ConvertMaps(context, keeping); break;
    case Command::Shift: ShiftMaps(context, keeping); break;
    case Command::Key: SetKeys(context, keeping); break;
    case Command::Import: ImportCurves(context, keeping); break;
    default: RestoreMaps(context, keeping); break;
  }
  if (!keeping.HasRoom()) context.Out.Say("marlit-batch: not everything that was overwritten could be kept");
}

ExitCode Run(const Order& call) {
  Console console(call.IsJson);
  Context context{call, console, stop};
  try {
    RunCommand(context);
  } catch (const std::bad_alloc&) {
    context.Fail("out of memory");
  } catch (const std::exception& error) {
    context.Fail(error.what());
  }
  console.Flush();
  return context.End();
}

}  // namespace

int RunProgram(const std::vector<std::string>& arguments) {
  PrepareProcess();
  const ReadArguments read = ReadCommandLine(arguments);
  if (!read.Call) {
    std::fputs(read.Text.c_str(), read.IsHelp ? stdout : stderr);
    return static_cast<int>(read.IsHelp ? ExitCode::Done : ExitCode::WrongCall);
  }
  stop = false;
  WhenInterrupted([] { stop = true; });
  return static_cast<int>(Run(*read.Call));
}
