#include "tests/faults/addin_sweep.h"

#include <algorithm>
#include <chrono>
#include <string_view>

#include "addin/platform/log.h"
#include "addin/shell/lifecycle.h"
#include "addin/text/format.h"
#include "addin/text/utf8.h"
#include "tests/companion/running_companion.h"
#include "tests/support/captured_log.h"
#include "tests/support/http_text.h"
#include "tests/support/raw_connection.h"

namespace vek::support {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kStride = 23;
constexpr int kPort = 4001;
constexpr auto kPatience = 20s;

// A program in the companion's place, which ends at once.
class StartableCompanion {
 public:
  StartableCompanion() {
    std::filesystem::create_directories(kFolder);
    program_.emplace(std::wstring(kFolder) + L"\\Vek.exe");
  }
  ~StartableCompanion() {
    program_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(kFolder, ignored);
  }

 private:
  static constexpr const wchar_t* kFolder = L"C:\\Program Files\\Vek";
  std::optional<NotingProgram> program_;
};

std::shared_ptr<void> Provide(Companion companion) {
  if (companion == Companion::kRuns) return std::make_shared<RunningCompanion>();
  if (companion == Companion::kCanBeStarted) return std::make_shared<StartableCompanion>();
  return {};
}

// Whether each result in an answer has words.
bool EachHasMessage(const nlohmann::json& value) {
  if (!value.is_structured()) return true;
  if (value.is_object() && value.contains("message") && value["message"] == "") return false;
  return std::ranges::all_of(value, EachHasMessage);
}

// The failures of which the add-in tells nobody.
bool MayBeSilent(const Failure& failure) {
  constexpr std::string_view kSilent[] = {
      // A command, or an entry of a menu, that isn't there is told by not being there.
      "ProMenubarMenuAdd", "ProMenubarmenuPushbuttonAdd", "ProCmdActionAdd", "ProCmdIconSet",
      "ProCmdDesignate", "ProCmdCmdIdFind", "ProNotificationSet", "ProPopupmenuIdGet",
      "ProPopupmenuButtonAdd",
      // Without its timer the add-in serves no operation; each is told so when its wait is over.
      "ProUIDialogCreate", "ProUITimerCreate",
      // Pictures of the model that aren't brought up to date.
      "ProWindowCurrentGet", "ProWindowRepaint", "ProWindowActivate", "ProTreetoolRefresh", "ProMdlDisplay",
      // A component without a name is none that is searched for, and a buffer that can't be counted holds
      // nothing.
      "ProMdlMdlnameGet", "ProArraySizeGet",
      // The import goes on with a kind of file that isn't known.
      "ProIntfimportSourceTypeGet",
      // No update is installed, and no helper waited for.
      "GetModuleHandleExW", "GetModuleFileNameW", "CreateProcessW", "WaitForSingleObject",
      // The listener asks again, and reads again what it could not make out.
      "select", "accept", "setsockopt", "ioctlsocket", "MultiByteToWideChar",
      // The companion's status is what counts, not how long it was waited for nor what it adds.
      "WinHttpSetOption", "WinHttpQueryDataAvailable", "WinHttpReadData",
      // A program that can't be seen to run counts as one that doesn't.
      "CreateToolhelp32Snapshot", "Process32FirstW", "Process32NextW",
      // A line of the log is tried again, and lost in silence in the end.
      "CreateFileW", "FlushFileBuffers"};
  return std::ranges::find(kSilent, failure.call) != std::end(kSilent);
}

}  // namespace

AddinSweep::AddinSweep(const AddinRun& run) : SweptRun(run.suite + "." + run.name, kStride), run_(run) {
  aside_.emplace();
  companion_ = Provide(run_.companion);
}

void AddinSweep::TearDown() {
  Leave();
  SweptRun::TearDown();
}

void AddinSweep::Leave() {
  if (started_) Stop();
  session_.reset();
  helper_.reset();
}

// ---- grounds

void AddinSweep::Start() {
  started_ = true;
  wchar_t complaint[80] = L"";
  if (AddinInitialize(0, nullptr, nullptr, nullptr, complaint) != 0)
    Find("the host is told of a failed start");
}

void AddinSweep::Stop() {
  started_ = false;
  AddinTerminate();
}

AddinSweep& AddinSweep::NewPart() {
  OperationTest::NewPart();
  return *this;
}

AddinSweep& AddinSweep::DrilledBlock() {
  NewPart();
  Lay(L"api_sketch_create", LR"({"name":"S","plane":"XY"})");
  Lay(L"api_sketch_rectangle_two_points", LR"({"sketch_name":"S","x1":0,"y1":0,"x2":40,"y2":20})");
  Lay(L"api_feature_extrude", LR"({"sketch_name":"S","distance_mm":10})");
  Lay(L"api_sketch_create", LR"({"name":"P","plane":"XY"})");
  Lay(L"api_sketch_point", LR"({"sketch_name":"P","x":30,"y":10})");
  Lay(L"api_feature_hole", LR"({"sketch_name":"P","diameter_mm":8,"depth_mm":12})");
  return *this;
}

AddinSweep& AddinSweep::NewAssembly() {
  Lay(L"api_document_new_assembly");
  Lay(L"api_document_save_as", Format(LR"({"file_path":"%s"})", JsonPath(L"frame.asm")));
  return *this;
}

AddinSweep& AddinSweep::OnDisk(const std::wstring& file) {
  const std::filesystem::path path = directory() / file;
  if (file.ends_with(L".stp")) {
    std::filesystem::copy_file(VEK_TEST_DATA "/inch_block.stp", path);
    return *this;
  }
  Lay(file.ends_with(L".asm") ? L"api_document_new_assembly" : L"api_document_new_part");
  Lay(L"api_document_save_as", Format(LR"({"file_path":"%s"})", JsonPath(file)));
  Lay(L"api_document_close", Format(LR"({"name_or_path":"%s"})", file));
  std::filesystem::rename(path.wstring() + L".1", path);
  return *this;
}

AddinSweep& AddinSweep::Place(const std::wstring& file) {
  Lay(L"api_assembly_add_component", Format(LR"({"file_path":"%s"})", JsonPath(file)));
  return *this;
}

void AddinSweep::InstallSession() {
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", directory().c_str());
  std::filesystem::create_directories(directory() / "bin");
  session_ = std::make_unique<NotingProgram>((directory() / L"bin\\parametric.exe").wstring());
}

void AddinSweep::SelectComponent() {
  bench::Model& assembly = Current();
  for (const auto& feature : assembly.features) {
    if (!feature->component) continue;
    bench::Model& model = *feature->component->model;
    host().picks.Select({{{static_cast<ProType>(model.type), -1, bench::Handle(model)},
                          {bench::Handle(assembly), {feature->id}, 1}}});
    return;
  }
  throw std::logic_error("no component");
}

bench::Picked AddinSweep::Face(const std::string& type) {
  bench::Model& part = Current();
  for (const auto& face : part.topology.faces)
    if (face.type == type) return {{PRO_SURFACE, part.ids_of_keys.at(face.key), bench::Handle(part)}, {}};
  throw std::logic_error("no " + type);
}

// ---- runs

void AddinSweep::Request(const std::string& head, const std::wstring& body) {
  const std::string bytes = EncodeUtf8(body);
  answer_ = Exchange(head + "\r\nContent-Length: " + std::to_string(bytes.size()) + "\r\n\r\n" + bytes);
}

void AddinSweep::Ask(const std::wstring& file, const std::wstring& more) {
  const std::wstring path =
      file.find(L'.') == std::wstring::npos || more == L"by name" ? file : JsonPath(file);
  Request("POST / HTTP/1.1", Format(LR"({"downloadPath":"%s"%s})", path, more == L"by name" ? L"" : more));
  host().ui.RunTimersOnce();
}

void AddinSweep::WriteLogLine() {
  const std::wstring path = (directory() / "run.log").wstring();
  LogFile(path).Write("a line");
  LogShell(ReadBytes(path).find("a line") != std::string::npos ? L"the line is there" : L"the line is lost");
}

// The client stands in the host's own thread, so the timer fires between two looks.
std::string AddinSweep::Exchange(const std::string& request) {
  try {
    RawConnection client(kPort);
    if (!client.Send(request)) return {};
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!client.HasAnswer(1ms)) {
      host().ui.RunTimersOnce();
      if (std::chrono::steady_clock::now() < deadline) continue;
      Find("neither an answer nor the end of the connection");
      return {};
    }
    return client.ReadToEnd();
  } catch (const std::runtime_error&) {
    return {};
  }
}

void AddinSweep::Prepare() {
  Leave();
  NewSession();
  ::SetEnvironmentVariableW(L"PRO_DIRECTORY", L"" VEK_INSTALLATION);
  if (run_.with_helper)
    helper_ = std::make_unique<NotingProgram>(TestProgramFolder() + L"\\VekAI.Creo.AddinHelper.exe");
  if (run_.ground) {
    run_.ground(*this);
    Start();
  }
  answer_.reset();
  ClearCapturedLog();
}

void AddinSweep::Go() {
  run_.act(*this);
}

// ---- what must hold

std::set<std::wstring> AddinSweep::Told() {
  std::set<std::wstring> told;
  // The server's thread gets going when it likes.
  for (const auto& line : CapturedLog())
    if (!line.text.ends_with(L"Server thread started")) told.insert(WithoutChance(line.text));
  for (const auto& message : host().ui.Messages()) told.insert(L"message: " + message.text);
  if (answer_) told.insert(L"answer: " + WithoutChance(std::wstring(answer_->begin(), answer_->end())));
  return told;
}

void AddinSweep::Examine(const Failure* failure) {
  ExamineNotices(failure);
  if (answer_) ExamineAnswer(failure);
  if (started_ && CountCaptured(L"Server status: FAILED") == 0) Probe();
  ExamineStop();
}

void AddinSweep::ExamineNotices(const Failure* failure) {
  for (const auto& line : CapturedLog()) {
    if (line.text.empty()) Find("an empty line in the log");
    if (line.text.find(L"Exception") != std::wstring::npos) Find(EncodeUtf8(line.text));
  }
  for (const auto& message : host().ui.Messages())
    if (message.text.empty()) Find("an empty message");
  const auto told = Told();
  if (failure) {
    if (told == undisturbed_ && !run_.tells_the_same && !failure->fails_anyway && !MayBeSilent(*failure))
      Find("nobody is told");
    return;
  }
  undisturbed_ = told;
  if (!run_.tells.empty() && std::ranges::none_of(told, [&](const std::wstring& text) {
        return text.find(run_.tells) != text.npos;
      })) {
    Find("nothing tells: " + EncodeUtf8(run_.tells));
    for (const std::wstring& text : told) Find("told: " + EncodeUtf8(text));
  }
}

// A connection that breaks has no answer; every other request has one.
void AddinSweep::ExamineAnswer(const Failure* failure) {
  if (answer_->empty()) {
    constexpr std::string_view kConnection[] = {"recv", "send", "select", "accept", "MultiByteToWideChar"};
    if (!failure || std::ranges::find(kConnection, failure->call) == std::end(kConnection)) Find("no answer");
    return;
  }
  if (!answer_->starts_with("HTTP/1.1 ")) return Find("no answer: " + *answer_);
  const std::string body = ParseAnswer(*answer_).body;
  if (answer_->starts_with("HTTP/1.1 204 ")) return;
  if (body.empty()) return Find("an empty answer");
  if (answer_->find("application/json") == std::string::npos) return;
  const auto json = nlohmann::json::parse(body, nullptr, false);
  if (json.is_discarded()) return Find("no JSON: " + body);
  if (!EachHasMessage(json)) Find("a result without a message: " + body);
}

// The next requests are answered.
void AddinSweep::Probe() {
  const std::string health = Exchange("GET /health HTTP/1.1\r\n\r\n");
  const auto json = nlohmann::json::parse(ParseAnswer(health).body, nullptr, false);
  if (!health.starts_with("HTTP/1.1 200 ") || json.is_discarded()) Find("no health afterwards: " + health);
  // Without a timer, operations wait in vain; the add-in goes on without it all the same.
  if (!host().ui.NextDue()) return;
  const std::string batch = R"({"operations":{"api_document_list_open":{}}})";
  const std::string open = Exchange(RequestText("POST", "/execute", batch));
  if (!open.starts_with("HTTP/1.1 200 ") || open.find("\"success\":true") == std::string::npos)
    Find("no operation afterwards: " + open);
}

// A stop, another start and its stop leave nothing in the host.
void AddinSweep::ExamineStop() {
  if (started_) Stop();
  if (run_.suite == "Lifecycle") {
    Start();
    if (CountCaptured(L"Server status: ACTIVE") == 0) Find("no second start");
    for (const char* const name : {"OpenVekApp_Act", "FindVekComponent_Act", "ReplaceVekPart_Act",
                                   "InspectAssembly_Act", "AboutVek_Act"})
      if (!host().menus.Find(name)) Find(std::string("no command afterwards: ") + name);
    Probe();
    Stop();
  }
  if (host().ui.TimerCount() > 0 || host().ui.DialogCount() > 0) Find("timer or dialog are left");
  if (host().menus.IsNotified()) Find("the popup menus still notify");
}

}  // namespace vek::support
