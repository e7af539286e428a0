#include "addin/ops/sketch/create.h"

#include <algorithm>
#include <utility>

#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/ops/common/history.h"
#include "addin/ops/common/units.h"
#include "addin/ops/sketch/commit.h"
#include "addin/ops/sketch/feature_name.h"
#include "addin/ops/sketch/planes.h"
#include "addin/ops/sketch/section_pen.h"
#include "addin/platform/files.h"
#include "addin/platform/log.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::sketch {
namespace {

constexpr std::wstring_view kGeneratedPrefix = L"SKETCH_";
constexpr int kNamesTried = 10'000;

struct PlaneWord {
  std::wstring_view word;
  const wchar_t* plane;
};
constexpr PlaneWord kPlaneWords[] = {{L"XY", L"FRONT"}, {L"XZ", L"TOP"}, {L"YZ", L"RIGHT"}};

std::wstring MapPlane(const std::wstring& requested) {
  const std::wstring word = ToUpper(Trim(requested));
  for (const PlaneWord& entry : kPlaneWords) {
    if (word == entry.word) return entry.plane;
  }
  return requested;
}

bool FeatureExists(ProMdl model, std::wstring_view name) {
  return FeatureIdOfName(model, name) != -1;
}

// The number behind a name that could have been generated; 0 for any other.
std::int32_t GeneratedNumber(const std::wstring& name) {
  if (name.size() <= kGeneratedPrefix.size()) return 0;
  const std::wstring_view text = name;
  if (!EqualsIgnoreCase(text.substr(0, kGeneratedPrefix.size()), kGeneratedPrefix)) return 0;
  return ReadLeadingInteger(text.substr(kGeneratedPrefix.size()));
}

std::wstring GenerateSketchName(ProMdl model) {
  std::int32_t highest = 0;
  VisitFeatures(model, [&highest](ProFeature* feature, ProError) {
    highest = std::max(highest, GeneratedNumber(TrimmedFeatureName(*feature)));
    return PRO_TK_NO_ERROR;
  });
  SketchNameCounter = std::max(SketchNameCounter, highest);

  for (int i = 0; i < kNamesTried; ++i) {
    // A feature can bear the highest number there is; the count then wraps instead of overflowing.
    SketchNameCounter = static_cast<std::int32_t>(static_cast<std::uint32_t>(SketchNameCounter) + 1);
    std::wstring name = Format(L"SKETCH_%d", SketchNameCounter);
    if (FindSketchSession(name) == nullptr && !FeatureExists(model, name)) return name;
  }
  return Format(L"SKETCH_%d", static_cast<int>(TickCount()));
}

// The name that the client wants, or a generated one.
CreoMcpOperationResult ReadSketchName(ProMdl model, const std::wstring& arguments, std::wstring& name) {
  name = JsonReadStringArgument(arguments, L"name");
  if (name.empty()) {
    name = GenerateSketchName(model);
    return MakeSuccessResult();
  }
  if (FindSketchSession(name) != nullptr)
    return MakeFailureResult(Format(L"Sketch '%s' already exists.", name));
  if (FeatureExists(model, name))
    return MakeFailureResult(
        Format(L"Feature name '%s' is already used in the model. Choose a different sketch name.", name));
  return MakeSuccessResult();
}

// Finds the session's plane and what orients the sketch on it.
CreoMcpOperationResult PlaceOnPlane(SketchSession& session) {
  if (!FindDatumPlane(session.model, session.plane_name, session.plane_item))
    return MakeFailureResult(Format(L"Datum plane '%s' not found in the active part.", session.plane_name));
  ChooseOrientation(session);
  LogOperation(Format(L"Sketch Create: hasOrient=%d orientDir=%d", static_cast<int>(session.has_orient),
                      session.orient_dir));
  if (!session.has_orient)
    return MakeFailureResult(
        L"Could not resolve sketch orientation reference (need RIGHT/TOP/FRONT datums).");
  return MakeSuccessResult();
}

// Makes the private section with its seed. With the seed the first commit has a feature to make, so the
// sketch stands in the model as soon as it is created; its label is always P:1.
CreoMcpOperationResult MakeSeededSection(SketchSession& session) {
  if (ProSection2DAlloc(&session.section) != PRO_TK_NO_ERROR || session.section == nullptr)
    return MakeFailureResult(L"Failed to allocate sketch section.");
  ProSectionIntentManagerModeSet(session.section, PRO_B_TRUE);
  session.has_section = true;
  ProName name;
  CopyCut(name, session.name);
  ProSectionNameSet(session.section, name);

  const double scale = MmToModelScale(session.model);
  SectionPen pen(session, 1, true);  // the origin is the origin at any scale, also at one that is no number
  if (!pen.Point({0, 0})) return MakeFailureResult(L"Failed to seed sketch geometry.");
  LogOperation(Format(L"Sketch Create: seeded construction point id=%d at origin (scale=%g)",
                      session.entities.back().entity_id, scale));
  return MakeSuccessResult();
}

// Enters the session in the table and commits it for the first time; a failure takes it out again, so that a
// client can try the name once more.
CreoMcpOperationResult StoreAndCommit(SketchSession session) {
  const std::wstring name = session.name;
  const auto [entry, stored] = SketchSessionTable().try_emplace(name, std::move(session));
  if (!stored) return MakeFailureResult(L"Failed to store sketch session.");
  LogOperation(L"Sketch Create: committing seeded sketch");
  auto committed = CommitSketch(entry->second);
  if (!committed.success) SketchSessionTable().erase(entry);
  return committed;
}

const wchar_t* BoolWord(bool value) {
  return value ? L"true" : L"false";
}

std::wstring ListRow(const SketchSession& session) {
  const auto count = [&session](wchar_t letter) {
    return static_cast<int>(
        std::count_if(session.entities.begin(), session.entities.end(),
                      [letter](const SketchEntityRecord& record) { return record.letter == letter; }));
  };
  return Format(
      L"{\"name\":\"%s\",\"plane\":\"%s\",\"lines\":%d,\"circles\":%d,\"arcs\":%d,\"entities\":%d,"
      L"\"committed\":%s}",
      JsonEscape(session.name), JsonEscape(session.plane_name), count(L'L'), count(L'C'), count(L'A'),
      static_cast<int>(session.entities.size()), BoolWord(session.has_feature));
}

}  // namespace

std::wstring AddNameToArgs(const std::wstring& args, const std::wstring& name) {
  if (JsonReadStringArgument(args, L"name") == name) return args;
  std::wstring_view object = Trim(args);
  if (object.empty()) object = L"{}";
  if (object.front() != L'{') return args;
  if (object.size() > 2) return Format(L"{\"name\":\"%s\",%s", JsonEscape(name), object.substr(1));
  return Format(L"{\"name\":\"%s\"}", JsonEscape(name));
}

CreoMcpOperationResult SketchCreate(const std::wstring& arguments) {
  LogOperation(L"Sketch Create: enter");
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) {
    LogOperation(L"Sketch Create: no active part");
    return active;
  }
  SketchSession session;
  session.model = model;
  if (auto named = ReadSketchName(model, arguments, session.name); !named.success) return named;

  const std::wstring requested = JsonReadStringArgument(arguments, L"plane");
  if (requested.empty())
    return MakeFailureResult(
        L"'plane' is required (XY, XZ, YZ, or a datum plane name). Face selectors are not yet supported.");
  session.plane_name = MapPlane(requested);
  LogOperation(Format(L"Sketch Create: name='%s' requestedPlane='%s' mappedPlane='%s'", session.name,
                      requested, session.plane_name));
  if (auto placed = PlaceOnPlane(session); !placed.success) return placed;
  if (auto seeded = MakeSeededSection(session); !seeded.success) return seeded;

  const std::wstring name = session.name;
  const std::wstring plane = session.plane_name;
  if (auto committed = StoreAndCommit(std::move(session)); !committed.success) return committed;

  const SketchSession& created = *FindSketchSession(name);
  const std::wstring data = Format(L"{\"name\":\"%s\",\"plane\":\"%s\",\"committed\":%s,\"seed\":\"P:1\"}",
                                   JsonEscape(name), JsonEscape(plane), BoolWord(created.has_feature));
  PushCreateSketch(AddNameToArgs(arguments, name), name);
  return MakeSuccessResult(
      Format(L"Sketch '%s' created on %s (seeded construction point at origin).", name, plane), data);
}

CreoMcpOperationResult SketchList(const std::wstring&) {
  ProMdl model = nullptr;
  if (auto active = RequireActiveModel(model); !active.success) return active;
  std::wstring rows;
  int count = 0;
  for (const auto& [name, session] : SketchSessionTable()) {
    if (session.model != model) continue;
    if (!rows.empty()) rows += L',';
    rows += ListRow(session);
    ++count;
  }
  return MakeSuccessResult(Format(L"%d sketch(es) found.", count), L"[" + rows + L"]");
}

}  // namespace vek::sketch
