#include "bench/host/instruments/call_frame.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <thread>
#include <utility>

#include "bench/host/host.h"
#include "bench/host/text.h"

namespace bench {
namespace {

// Enough to recognise a text; the journal is no archive.
constexpr std::size_t kTextShown = 120;

// The names of the calls that are being made, the innermost last: a visitor calls in while its visit runs.
std::vector<std::string>& CallsInProgress() {
  static std::vector<std::string> calls;
  return calls;
}

std::string Hexadecimal(const void* pointer) {
  char text[24];
  std::snprintf(text, sizeof text, "0x%llx",
                static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(pointer)));
  return text;
}

}  // namespace

std::string Describe(const void* pointer) {
  if (!pointer) return "null";
  Host& host = TheHost();
  if (host.OnMainThread())
    if (const Model* model = host.session.Find(pointer)) return ToUtf8(model->name);
  return Hexadecimal(pointer);
}

std::string Describe(const wchar_t* text) {
  if (!text) return "null";
  const std::wstring_view shown = Bounded(text, kTextShown);
  return '"' + ToUtf8(shown) + (shown.size() == kTextShown ? "…\"" : "\"");
}

std::string Describe(const char* text) {
  if (!text) return "null";
  return '"' + std::string(text) + '"';
}

std::string Describe(int number) {
  return std::to_string(number);
}

std::string Describe(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%g", number);
  return text;
}

std::string Describe(const ProModelitem* item) {
  if (!item) return "null";
  return std::to_string(item->type) + ':' + std::to_string(item->id) + " of " + Describe(item->owner);
}

std::string Describe(ProType type) {
  return std::to_string(type);
}

CallFrame::CallFrame(const char* name, std::string arguments, bool can_fail) : number_(0) {
  Host& host = TheHost();
  on_main_thread_ = host.OnMainThread();
  if (!on_main_thread_) {
    // Nothing of the host may be touched from here but the list of violations.
    host.ledger.Violation(name, "was called from another thread than the main one");
    scripted_ = true;
    status_ = PRO_TK_BAD_CONTEXT;
    return;
  }
  CallsInProgress().emplace_back(name);
  number_ = host.journal.Begin(name, std::move(arguments));
  if (!can_fail) return;
  const FaultPlan::Outcome outcome = host.faults.Next(name);
  if (outcome.delay_ms > 0) std::this_thread::sleep_for(std::chrono::milliseconds(outcome.delay_ms));
  if (!outcome.status) return;
  scripted_ = true;
  status_ = static_cast<ProError>(*outcome.status);
}

ProError CallFrame::Finish(ProError status) {
  if (!on_main_thread_) return status;
  TheHost().journal.End(number_, status);
  CallsInProgress().pop_back();
  return status;
}

ProError CallFrame::FinishAfterException() {
  try {
    throw;
  } catch (const std::exception& exception) {
    Complain(CurrentCall() + " failed: " + exception.what());
  } catch (...) {
    Complain(CurrentCall() + " failed for an unknown reason");
  }
  return Finish(PRO_TK_GENERAL_ERROR);
}

const std::string& CurrentCall() {
  static const std::string none = "the host";
  return CallsInProgress().empty() ? none : CallsInProgress().back();
}

}  // namespace bench
