#include "bench/host/instruments/ledger.h"

#include <utility>

namespace bench {
namespace {

constexpr std::size_t kFreedRemembered = 10'000;

std::map<HandleKind, int> Count(const auto& entries, bool with_sections) {
  std::map<HandleKind, int> counts;
  for (const auto& [handle, entry] : entries) {
    if (entry.kind == HandleKind::kSection && !with_sections) continue;
    ++counts[entry.kind];
  }
  return counts;
}

}  // namespace

const char* Name(HandleKind kind) {
  switch (kind) {
    case HandleKind::kArray:
      return "array";
    case HandleKind::kElement:
      return "element";
    case HandleKind::kElementPath:
      return "element path";
    case HandleKind::kExtractedTree:
      return "extracted tree";
    case HandleKind::kSelection:
      return "selection";
    case HandleKind::kReference:
      return "reference";
    case HandleKind::kCollection:
      return "collection";
    case HandleKind::kCurveInstruction:
      return "curve instruction";
    case HandleKind::kSurfaceInstruction:
      return "surface instruction";
    case HandleKind::kSurfaceReference:
      return "surface reference";
    case HandleKind::kSection:
      return "section";
    case HandleKind::kSectionErrors:
      return "section errors";
    case HandleKind::kConstraint:
      return "component constraint";
    case HandleKind::kDrawingErrors:
      return "drawing errors";
    case HandleKind::kInterference:
      return "interference";
    case HandleKind::kGeometryData:
      return "geometry data";
  }
  return "handle";
}

void Ledger::Give(const void* handle, HandleKind kind, const std::string& call) {
  // The allocator may hand out an address again; it is a handle of its own then.
  freed_.erase(handle);
  alive_[handle] = {kind, call};
}

bool Ledger::TakeBack(const void* handle, HandleKind kind, const std::string& call) {
  return Release(handle, kind, call, "frees");
}

bool Ledger::PassOn(const void* handle, HandleKind kind, const std::string& call) {
  return Release(handle, kind, call, "passes on");
}

bool Ledger::Check(const void* handle, HandleKind kind, const std::string& call) {
  const auto found = alive_.find(handle);
  if (found != alive_.end() && found->second.kind == kind) return true;
  const std::string wanted = Name(kind);
  if (found != alive_.end())
    Violation(call, std::string("uses one of kind ") + Name(found->second.kind) + " as " + wanted);
  else if (freed_.contains(handle))
    Violation(call, "uses a freed handle as " + wanted);
  else
    Violation(call, "uses a foreign pointer as " + wanted);
  return false;
}

bool Ledger::Release(const void* handle, HandleKind kind, const std::string& call, const char* verb) {
  const auto found = alive_.find(handle);
  const std::string wanted = Name(kind);
  if (found == alive_.end()) {
    const bool again = freed_.contains(handle);
    Violation(call, std::string(verb) + (again ? " an already freed " : " a foreign pointer as ") + wanted);
    return false;
  }
  if (found->second.kind != kind) {
    Violation(call, std::string(verb) + " one of kind " + Name(found->second.kind) + " as " + wanted);
    return false;
  }
  alive_.erase(found);
  RememberFreed(handle);
  return true;
}

void Ledger::RememberFreed(const void* handle) {
  if (!freed_.insert(handle).second) return;
  freed_in_order_.push_back(handle);
  if (freed_in_order_.size() <= kFreedRemembered) return;
  freed_.erase(freed_in_order_.front());
  freed_in_order_.pop_front();
}

void Ledger::Violation(const std::string& call, const std::string& what) {
  const std::lock_guard lock(violations_lock_);
  violations_.push_back(call + " " + what);
}

std::vector<std::string> Ledger::Violations() const {
  const std::lock_guard lock(violations_lock_);
  return violations_;
}

std::map<HandleKind, int> Ledger::Outstanding() const {
  return Count(alive_, false);
}

std::map<HandleKind, int> Ledger::OutstandingWithSections() const {
  return Count(alive_, true);
}

void Ledger::Clear() {
  alive_.clear();
  freed_.clear();
  freed_in_order_.clear();
  const std::lock_guard lock(violations_lock_);
  violations_.clear();
}

}  // namespace bench
