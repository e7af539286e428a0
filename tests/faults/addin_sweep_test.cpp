// The add-in's start and stop, its requests and its commands: one run of each, and one of each other branch.
#include "tests/faults/addin_sweep.h"

namespace vek::support {

std::vector<AddinRun> AddinRuns() {
  using Sweep = AddinSweep;
  const auto nothing = [](Sweep&) {};
  const auto start = [](Sweep& s) { s.Start(); };
  const auto stop = [](Sweep& s) { s.Stop(); };
  const auto part = [](Sweep& s) { s.NewPart(); };
  const auto assembly = [](Sweep& s) { s.NewAssembly(); };
  const auto bolt = [](Sweep& s) { s.OnDisk(L"bolt.prt"); };
  const auto step = [](Sweep& s) { s.OnDisk(L"block.stp"); };
  const auto replaceable = [](Sweep& s) {
    s.OnDisk(L"bolt.prt").OnDisk(L"screw.prt").NewAssembly().Place(L"bolt.prt");
  };
  const auto picked = [](Sweep& s) { s.DrilledBlock().PickFace("plane"); };
  const auto request = [](const char* head, const wchar_t* body) {
    return [=](Sweep& s) { s.Request(head, body); };
  };
  const auto ask = [](const wchar_t* file, const wchar_t* more = L"") {
    return [=](Sweep& s) { s.Ask(file, more); };
  };
  const auto command = [](const char* name) { return [=](Sweep& s) { s.Choose(name); }; };
  const auto both = [](auto first, auto second) {
    return [=](Sweep& s) {
      first(s);
      second(s);
    };
  };
  const auto kMissing = Companion::kMissing, kRuns = Companion::kRuns;
  const wchar_t* const kReplaced = L"Part replacement completed successfully";

  return {
      {"Lifecycle", "start", {}, start, L"Server status: ACTIVE"},
      {"Lifecycle", "start_with_helper", {}, start, L"Server status: ACTIVE", kMissing, true, true},
      {"Lifecycle", "stop", nothing, stop, L"Port 4001 released"},
      {"Lifecycle", "stop_with_helper", nothing, stop, L"Port 4001 released", kMissing, true, true},
      {"Lifecycle", "popup_menu", nothing, [](Sweep& s) { s.OpenPopup(); }, L""},
      {"Lifecycle", "log_line", {}, [](Sweep& s) { s.WriteLogLine(); }, L"the line is there"},

      {"Requests", "health", nothing, request("GET /health HTTP/1.1", L""), L"200 OK"},
      {"Requests", "health_in_code_page", nothing, request("GET /health HTTP/1.1\r\nX: \xe4", L""),
       L"200 OK"},
      {"Requests", "nowhere", nothing, request("GET /nowhere HTTP/1.1", L""), L"404"},
      {"Requests", "options", nothing, request("OPTIONS / HTTP/1.1", L""), L"204"},
      {"Requests", "execute", part,
       request("POST /execute HTTP/1.1",
               LR"({"operations":{"api_document_info":{},"api_sketch_create":{"name":"S","plane":"XY"},)"
               LR"("api_none_such":{}}})"),
       L"200 OK"},
      {"Requests", "open_part_over_nothing", bolt, ask(L"bolt.prt"), L"Model displayed in separate window"},
      {"Requests", "open_part_over_assembly", both(bolt, assembly), ask(L"bolt.prt"),
       L"Component added with enhanced refresh"},
      {"Requests", "open_part_over_part", both(bolt, [](Sweep& s) { s.NewPart().InstallSession(); }),
       ask(L"bolt.prt"), L"New session created for imported part"},
      {"Requests", "open_step", both(step, assembly), ask(L"block.stp"), L"STEP file imported successfully"},
      {"Requests", "open_step_refused", both(step, [](Sweep& s) { s.AnswerNext(L"cancel"); }),
       ask(L"block.stp"), L"User canceled STEP file dialog"},
      {"Requests", "open_from_workspace", both(bolt, part), ask(L"vault/bolt.prt", L"by name"),
       L"Windchill open completed successfully"},
      {"Requests", "open_missing", nothing, ask(L"missing.prt"), L"404"},
      {"Requests", "replace", replaceable,
       ask(L"screw.prt", LR"(,"placeLikeComponentTitle":"bolt","replaceExisting":true)"), kReplaced},
      {"Requests", "add_like", both(replaceable, [](Sweep& s) { s.Place(L"bolt.prt"); }),
       ask(L"screw.prt",
           LR"(,"placeLikeComponentTitle":"Hexagon bolt","placeLikeFilePath":"C:\\store\\Bolt.PRT.3")"),
       kReplaced},
      {"Requests", "replace_nothing", replaceable,
       ask(L"screw.prt", LR"(,"placeLikeComponentTitle":"rivet")"), L"Component not found in assembly"},
      {"Requests", "inspect",
       [](Sweep& s) { s.OnDisk(L"unit.asm").OnDisk(L"other.asm").NewAssembly().Place(L"unit.asm"); },
       ask(L"other.asm", LR"(,"placeLikeComponentTitle":"unit","replaceExisting":true)"),
       L"Assembly replacement completed successfully"},

      {"Commands", "open_companion_running", nothing, command("OpenVekApp_Act"), L"already running", kRuns},
      {"Commands", "open_companion_missing", nothing, command("OpenVekApp_Act"), L"Failed to launch"},
      {"Commands", "open_companion", nothing, command("OpenVekApp_Act"), L"launched successfully",
       Companion::kCanBeStarted},
      {"Commands", "find_component", [](Sweep& s) { s.DrilledBlock().SelectFace("cylinder"); },
       command("FindVekComponent_Act"), L"Measurement data sent successfully", kRuns},
      {"Commands", "find_component_picked", picked, command("FindVekComponent_Act"),
       L"Turning on the Vek app"},
      {"Commands", "find_component_of_nothing", part, command("FindVekComponent_Act"), L"No faces selected",
       kMissing, false, true},
      {"Commands", "replace_component", both(replaceable, [](Sweep& s) { s.SelectComponent(); }),
       command("ReplaceVekPart_Act"), L"Replace part data sent successfully", kRuns},
      {"Commands", "replace_picked", picked, command("ReplaceVekPart_Act"), L"Turning on the Vek app"},
      {"Commands", "replace_nothing", nothing, command("ReplaceVekPart_Act"), L"No Part selected", kMissing,
       false, true},
      {"Commands", "inspect_current", assembly, command("InspectAssembly_Act"),
       L"Assembly inspection data sent successfully", kRuns},
      {"Commands", "inspect_component",
       [](Sweep& s) { s.OnDisk(L"unit.asm").NewAssembly().Place(L"unit.asm").SelectComponent(); },
       command("InspectAssembly_Act"), L"Assembly inspection data sent successfully", kRuns},
      {"Commands", "inspect_part", part, command("InspectAssembly_Act"), L"Current model is not an assembly",
       kMissing, false, true},
      {"Commands", "about_missing", nothing, command("AboutVek_Act"), L"Could not open About dialog."},
      {"Commands", "about", nothing, command("AboutVek_Act"), L"", kMissing, true},
  };
}

void RegisterSweeps() {
  static const std::vector<AddinRun> runs = AddinRuns();
  for (const AddinRun& run : runs)
    testing::RegisterTest(run.suite.c_str(), run.name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [&run]() -> AddinSweep* { return new AddinSweep(run); });
}

}  // namespace vek::support
