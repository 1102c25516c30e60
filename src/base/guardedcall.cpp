#include "base/guardedcall.h"

#include <cfenv>
#include <csetjmp>

namespace {

// A frame in the chain of handlers that Windows keeps for each thread of a 32-bit process. The compiler has no words of
// its own for one.
struct Frame {
  EXCEPTION_REGISTRATION_RECORD record;  // first, since the system hands back its address
  jmp_buf back;
  DWORD code;
  bool raised;
};

constexpr DWORD kUnwinding = 0x2 | 0x4;  // the chain is being taken down: not an exception to be dealt with

EXCEPTION_DISPOSITION CDECL OnException(EXCEPTION_RECORD* exception, void* record, CONTEXT*, void*) {
  if (exception->ExceptionFlags & kUnwinding) return ExceptionContinueSearch;
  auto* const frame = static_cast<Frame*>(record);
  frame->code = exception->ExceptionCode;
  frame->raised = true;
  // Takes down the chain to this frame on its way.
  longjmp(frame->back, 1);
}

}  // namespace

DWORD CallGuarded(GuardedFunction function, void* argument) {
  Frame frame{};
  std::fenv_t arithmetic;
  std::fegetenv(&arithmetic);
  frame.record.Next = reinterpret_cast<EXCEPTION_REGISTRATION_RECORD*>(__readfsdword(0));
  frame.record.Handler = reinterpret_cast<PEXCEPTION_ROUTINE>(OnException);
  __writefsdword(0, reinterpret_cast<DWORD>(&frame));
  if (setjmp(frame.back) == 0) frame.code = function(argument);
  __writefsdword(0, reinterpret_cast<DWORD>(frame.record.Next));
  // Numbers may have been left in the processor, where the next calculations would trip over them.
  if (frame.raised) std::fesetenv(&arithmetic);
  return frame.code;
}
