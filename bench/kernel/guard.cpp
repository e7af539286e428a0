#include "bench/kernel/guard.h"

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <OSD.hxx>
#include <OSD_Signal.hxx>
#include <Standard_ErrorHandler.hxx>
#include <Standard_Failure.hxx>
#include <exception>

namespace bench::kernel {

namespace {

std::string Described(const Standard_Failure& failure) {
  const std::string type = failure.DynamicType()->Name();
  const char* text = failure.GetMessageString();
  return text && *text ? type + ": " + text : type;
}

}  // namespace

void PrepareToolkit() {
  Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_Printer));
  constexpr bool kTrapFloatingPoint = false;
  OSD::SetSignal(kTrapFloatingPoint);
}

Outcome Guarded(const std::function<void()>& work) {
  Outcome outcome;
  try {
    OCC_CATCH_SIGNALS
    work();
  } catch (const OSD_Signal& signal) {
    outcome = {"the geometry crashed: " + Described(signal), true};
  } catch (const Standard_Failure& failure) {
    outcome.error = "the geometry failed: " + Described(failure);
  } catch (const std::exception& failure) {
    outcome.error = failure.what();
  } catch (...) {
    outcome.error = "the geometry failed for an unknown reason";
  }
  return outcome;
}

}  // namespace bench::kernel
