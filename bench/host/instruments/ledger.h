// The ledger: everything that the host has given out and that a caller must give back.
#pragma once

#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace bench {

// What was given out. A sketch's private section is kept for good by its owner and is a kind of its own.
enum class HandleKind {
  kArray,
  kElement,
  kElementPath,
  kExtractedTree,
  kSelection,
  kReference,
  kCollection,
  kCurveInstruction,
  kSurfaceInstruction,
  kSurfaceReference,
  kSection,
  kSectionErrors,
  kConstraint,
  kInterference,
  kGeometryData,
  kDrawingErrors
};

const char* Name(HandleKind kind);

class Ledger {
 public:
  // Enters a handle that was just given out.
  void Give(const void* handle, HandleKind kind, const std::string& call);

  // Takes a handle back. False, and a violation in the name of `call`, when it is not outstanding with that
  // kind.
  bool TakeBack(const void* handle, HandleKind kind, const std::string& call);

  // The handle has passed into the possession of the host (an element that was added to a tree).
  bool PassOn(const void* handle, HandleKind kind, const std::string& call);

  // Whether the handle is alive with that kind; a violation in the name of `call` when it is not.
  bool Check(const void* handle, HandleKind kind, const std::string& call);

  // Records what a caller did wrong. It may be called from any thread: a call from a wrong one is a
  // violation.
  void Violation(const std::string& call, const std::string& what);

  // What was never freed, by kind; private sections are not counted.
  std::map<HandleKind, int> Outstanding() const;
  std::map<HandleKind, int> OutstandingWithSections() const;
  std::vector<std::string> Violations() const;

  // Forgets everything; the handles given out before are foreign from now on.
  void Clear();

 private:
  struct Entry {
    HandleKind kind;
    std::string call;
  };
  bool Release(const void* handle, HandleKind kind, const std::string& call, const char* verb);
  void RememberFreed(const void* handle);

  std::map<const void*, Entry> alive_;
  // The handles that were freed last: they tell a second free from a foreign pointer.
  std::set<const void*> freed_;
  std::deque<const void*> freed_in_order_;
  mutable std::mutex violations_lock_;
  std::vector<std::string> violations_;
};

}  // namespace bench
