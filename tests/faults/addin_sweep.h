// Runs of the add-in as a whole: what the host, a client or the user asks of it, with the real port behind
// it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "bench/host/picks.h"
#include "tests/faults/swept_run.h"
#include "tests/support/companion_aside.h"
#include "tests/support/noting_program.h"

namespace vek::support {

class AddinSweep;

// The companion application, as a run finds it.
enum class Companion { kMissing, kCanBeStarted, kRuns };

struct AddinRun {
  std::string suite, name;
  // What the started add-in stands on, or none: it isn't started yet; and what is asked of it.
  std::function<void(AddinSweep&)> ground, act;
  std::wstring tells;  // a line, message or answer that shows that the branch that is meant was taken
  Companion companion = Companion::kMissing;
  bool with_helper = false;
  bool tells_the_same = false;  // may be, whatever fails: a refusal, or nothing of a helper
};

class AddinSweep : public SweptRun {
 public:
  explicit AddinSweep(const AddinRun& run);

  // ---- what grounds are made of
  AddinSweep& NewPart();
  AddinSweep& DrilledBlock();
  // With a file in the test's directory.
  AddinSweep& NewAssembly();
  // A model that lies in the directory and isn't in session.
  AddinSweep& OnDisk(const std::wstring& file);
  // A component of a model on the disk, in the current assembly.
  AddinSweep& Place(const std::wstring& file);
  // Another session of the host can be started.
  void InstallSession();
  void SelectFace(const std::string& type) { host().picks.Select({Face(type)}); }
  void SelectComponent();
  void PickFace(const std::string& type) { host().picks.PickNext(Face(type)); }
  void AnswerNext(const wchar_t* answer) { host().ui.AnswerNext(answer); }

  // ---- what runs are made of
  void Start();
  void Stop();
  void Choose(const char* command) { host().menus.Run(command); }
  void OpenPopup() { host().menus.BuildPopup(L"Tree"); }
  void Request(const std::string& head, const std::wstring& body = {});
  // Asks to open a file of the directory, with more fields behind its path, and lets it be served.
  void Ask(const std::wstring& file, const std::wstring& more = {});
  void WriteLogLine();

 private:
  void TearDown() override;
  void Prepare() override;
  void Go() override;
  void Examine(const Failure* failure) override;
  // A helper is Windows' matter; the rest of such a run is another one's.
  bool SweepsToolkit() const override { return !run_.with_helper; }

  void Leave();
  bench::Picked Face(const std::string& type);
  std::string Exchange(const std::string& request);
  std::set<std::wstring> Told();
  void ExamineAnswer(const Failure* failure);
  void ExamineNotices(const Failure* failure);
  void Probe();
  void ExamineStop();

  const AddinRun& run_;
  std::optional<CompanionAside> aside_;
  std::shared_ptr<void> companion_;
  std::unique_ptr<NotingProgram> helper_, session_;
  bool started_ = false;
  std::optional<std::string> answer_;  // none where the run asks for none
  std::set<std::wstring> undisturbed_;
};

std::vector<AddinRun> AddinRuns();

}  // namespace vek::support
