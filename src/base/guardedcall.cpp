#include "base/guardedcall.h"

#include <cfenv>
#include <csetjmp>

namespace {

// A frame in the chain of handlers that Windows keeps for each thread of a 32-bit process. The compiler has no words of
// its own for one.
struct Frame {
  EXCEPTION_REGISTRATION_RECORD Record;  // first, since the system hands back its address
  jmp_buf Back;
  DWORD Code;
  bool Raised;
};

constexpr DWORD kUnwinding = 0x2 | 0x4;  // the chain is being taken down: not an exception to be dealt with

EXCEPTION_DISPOSITION CDECL OnException(EXCEPTION_RECORD* exception, void* record, CONTEXT*, void*) {
  if (exception->ExceptionFlags & kUnwinding) return ExceptionContinueSearch;
  auto* const frame = static_cast<Frame*>(record);
  frame->Code = exception->ExceptionCode;
  frame->Raised = true;
  // Takes down the chain to this frame on its way.
  longjmp(frame->Back, 1);
}

}  // namespace

DWORD CallGuarded(GuardedFunction function, void* argument) {
  Frame frame{};
  std::fenv_t arithmetic;
  std::fegetenv(&arithmetic);
  frame.Record.Next = reinterpret_cast<EXCEPTION_REGISTRATION_RECORD*>(__readfsdword(0));
  frame.Record.Handler = reinterpret_cast<PEXCEPTION_ROUTINE>(OnException);
  __writefsdword(0, reinterpret_cast<DWORD>(&frame));
  if (setjmp(frame.Back) == 0) frame.Code = function(argument);
  __writefsdword(0, reinterpret_cast<DWORD>(frame.Record.Next));
  // Numbers may have been left in the processor, where the next calculations would trip over them.
  if (frame.Raised) std::fesetenv(&arithmetic);
  return frame.Code;
}
