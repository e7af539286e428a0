// The add-in's start and stop, its requests and its commands: one run of each, and one of each other branch.
#include "tests/faults/addin_sweep.h"

namespace vek::support {

std::vector<AddinRun> AddinRuns() {
  using Sweep = AddinSweep;
  const auto nothing = [](Sweep&) {};
  const auto started = [](Sweep& s) { s.Start(); };
  const auto request = [](const char* head, const wchar_t* body) {
    return [=](Sweep& s) { s.Request(head, body); };
  };
  const auto command = [](const char* name) { return [=](Sweep& s) { s.Choose(name); }; };
  const auto replaceable = [](Sweep& s) {
    s.OnDisk(L"bolt.prt");
    s.OnDisk(L"screw.prt");
    s.NewAssembly();
    s.Place(L"bolt.prt");
    s.Start();
  };
  const auto kRuns = Companion::kRuns;

  return {
      {"Lifecycle", "start", nothing, [](Sweep& s) { s.Start(); }, L"Server status: ACTIVE"},
      {"Lifecycle", "start_with_helper", nothing, [](Sweep& s) { s.Start(); }, L"Server status: ACTIVE",
       Companion::kMissing, true, true},
      {"Lifecycle", "stop", started, [](Sweep& s) { s.Stop(); }, L"Port 4001 released"},
      {"Lifecycle", "stop_with_helper", started, [](Sweep& s) { s.Stop(); }, L"Port 4001 released",
       Companion::kMissing, true, true},
      {"Lifecycle", "popup_menu", started, [](Sweep& s) { s.OpenPopup(); }, L""},
      {"Lifecycle", "log_line", nothing, [](Sweep& s) { s.WriteLogLine(); }, L"the line is there"},

      {"Requests", "health", started, request("GET /health HTTP/1.1", L""), L"200 OK"},
      {"Requests", "health_in_code_page", started, request("GET /health HTTP/1.1\r\nX: \xe4", L""),
       L"200 OK"},
      {"Requests", "nowhere", started, request("GET /nowhere HTTP/1.1", L""), L"404"},
      {"Requests", "options", started, request("OPTIONS / HTTP/1.1", L""), L"204"},
      {"Requests", "execute",
       [](Sweep& s) {
         s.NewPart();
         s.Start();
       },
       request("POST /execute HTTP/1.1",
               LR"({"operations":{"api_document_info":{},"api_sketch_create":{"name":"S","plane":"XY"},)"
               LR"("api_none_such":{}}})"),
       L"200 OK"},
      {"Requests", "open_part_over_nothing",
       [](Sweep& s) {
         s.OnDisk(L"bolt.prt");
         s.Start();
       },
       [](Sweep& s) { s.Ask(L"bolt.prt"); }, L"Model displayed in separate window"},
      {"Requests", "open_part_over_assembly",
       [](Sweep& s) {
         s.OnDisk(L"bolt.prt");
         s.NewAssembly();
         s.Start();
       },
       [](Sweep& s) { s.Ask(L"bolt.prt"); }, L"Component added with enhanced refresh"},
      {"Requests", "open_part_over_part",
       [](Sweep& s) {
         s.OnDisk(L"bolt.prt");
         s.NewPart();
         s.InstallSession();
         s.Start();
       },
       [](Sweep& s) { s.Ask(L"bolt.prt"); }, L"New session created for imported part"},
      {"Requests", "open_step",
       [](Sweep& s) {
         s.OnDisk(L"block.stp");
         s.NewAssembly();
         s.Start();
       },
       [](Sweep& s) { s.Ask(L"block.stp"); }, L"STEP file imported successfully"},
      {"Requests", "open_step_refused",
       [](Sweep& s) {
         s.OnDisk(L"block.stp");
         s.Start();
         s.AnswerNext(L"cancel");
       },
       [](Sweep& s) { s.Ask(L"block.stp"); }, L"User canceled STEP file dialog"},
      {"Requests", "open_from_workspace",
       [](Sweep& s) {
         s.OnDisk(L"bolt.prt");
         s.NewPart();
         s.Start();
       },
       [](Sweep& s) { s.Ask(L"vault/bolt.prt", L"by name"); }, L"Windchill open completed successfully"},
      {"Requests", "open_missing", started, [](Sweep& s) { s.Ask(L"missing.prt"); }, L"404"},
      {"Requests", "replace", replaceable,
       [](Sweep& s) { s.Ask(L"screw.prt", LR"(,"placeLikeComponentTitle":"bolt","replaceExisting":true)"); },
       L"Part replacement completed successfully"},
      {"Requests", "add_like",
       [](Sweep& s) {
         s.OnDisk(L"bolt.prt");
         s.OnDisk(L"screw.prt");
         s.NewAssembly();
         s.Place(L"bolt.prt");
         s.Place(L"bolt.prt");
         s.Start();
       },
       [](Sweep& s) {
         s.Ask(L"screw.prt",
               LR"(,"placeLikeComponentTitle":"Hexagon bolt","placeLikeFilePath":"C:\\store\\Bolt.PRT.3")");
       },
       L"Part replacement completed successfully"},
      {"Requests", "replace_nothing", replaceable,
       [](Sweep& s) { s.Ask(L"screw.prt", LR"(,"placeLikeComponentTitle":"rivet")"); },
       L"Component not found in assembly"},
      {"Requests", "inspect",
       [](Sweep& s) {
         s.OnDisk(L"unit.asm");
         s.OnDisk(L"other.asm");
         s.NewAssembly();
         s.Place(L"unit.asm");
         s.Start();
       },
       [](Sweep& s) { s.Ask(L"other.asm", LR"(,"placeLikeComponentTitle":"unit","replaceExisting":true)"); },
       L"Assembly replacement completed successfully"},

      {"Commands", "open_companion_running", started, command("OpenVekApp_Act"), L"already running", kRuns},
      {"Commands", "open_companion_missing", started, command("OpenVekApp_Act"), L"Failed to launch"},
      {"Commands", "open_companion", started, command("OpenVekApp_Act"), L"launched successfully",
       Companion::kCanBeStarted},
      {"Commands", "find_component",
       [](Sweep& s) {
         s.DrilledBlock();
         s.SelectFace("cylinder");
         s.Start();
       },
       command("FindVekComponent_Act"), L"Measurement data sent successfully", kRuns},
      {"Commands", "find_component_picked",
       [](Sweep& s) {
         s.DrilledBlock();
         s.PickFace("plane");
         s.Start();
       },
       command("FindVekComponent_Act"), L"Turning on the Vek app"},
      {"Commands", "find_component_of_nothing",
       [](Sweep& s) {
         s.NewPart();
         s.Start();
       },
       command("FindVekComponent_Act"), L"No faces selected", Companion::kMissing, false, true},
      {"Commands", "replace_component",
       [=](Sweep& s) {
         replaceable(s);
         s.SelectComponent();
       },
       command("ReplaceVekPart_Act"), L"Replace part data sent successfully", kRuns},
      {"Commands", "replace_picked",
       [](Sweep& s) {
         s.DrilledBlock();
         s.PickFace("plane");
         s.Start();
       },
       command("ReplaceVekPart_Act"), L"Turning on the Vek app"},
      {"Commands", "replace_nothing", started, command("ReplaceVekPart_Act"), L"No Part selected",
       Companion::kMissing, false, true},
      {"Commands", "inspect_current",
       [](Sweep& s) {
         s.NewAssembly();
         s.Start();
       },
       command("InspectAssembly_Act"), L"Assembly inspection data sent successfully", kRuns},
      {"Commands", "inspect_component",
       [](Sweep& s) {
         s.OnDisk(L"unit.asm");
         s.NewAssembly();
         s.Place(L"unit.asm");
         s.SelectComponent();
         s.Start();
       },
       command("InspectAssembly_Act"), L"Assembly inspection data sent successfully", kRuns},
      {"Commands", "inspect_part",
       [](Sweep& s) {
         s.NewPart();
         s.Start();
       },
       command("InspectAssembly_Act"), L"Current model is not an assembly", Companion::kMissing, false, true},
      {"Commands", "about_missing", started, command("AboutVek_Act"), L"Could not open About dialog."},
      {"Commands", "about", started, command("AboutVek_Act"), L"", Companion::kMissing, true},
  };
}

void RegisterSweeps() {
  static const std::vector<AddinRun> runs = AddinRuns();
  for (const AddinRun& run : runs)
    testing::RegisterTest(run.suite.c_str(), run.name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [&run]() -> AddinSweep* { return new AddinSweep(run); });
}

}  // namespace vek::support
