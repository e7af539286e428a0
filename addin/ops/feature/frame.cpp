#include "addin/ops/feature/frame.h"

#include <ProModelitem.h>

#include <algorithm>

#include "addin/host/text_buffer.h"
#include "addin/host/visits.h"
#include "addin/ops/common/model_access.h"
#include "addin/server/json_reader.h"
#include "addin/server/json_writer.h"
#include "addin/text/format.h"
#include "addin/text/wide_text.h"

namespace vek::feature {
namespace {

struct TypeWord {
  int type;
  const wchar_t* word;
};

constexpr TypeWord kTypeWords[] = {
    {0, L"first_feature"}, {911, L"hole"},     {913, L"round"},       {914, L"chamfer"},
    {915, L"slot"},        {916, L"cut"},      {917, L"protrusion"},  {918, L"neck"},
    {919, L"flange"},      {920, L"rib"},      {921, L"ear"},         {922, L"dome"},
    {923, L"datum"},       {924, L"loc_push"}, {925, L"udf"},         {926, L"datum_axis"},
    {927, L"draft"},       {928, L"shell"},    {931, L"datum_point"}, {945, L"pipe"},
    {949, L"curve"},       {979, L"csys"},     {989, L"extend"},      {990, L"solidify"},
    {1000, L"component"},  {1019, L"torus"},   {1070, L"thread"},
};

constexpr ActiveModelWords kActiveModelWords = {
    L"No active Creo document.",
    L"Failed to determine active document type.",
    L"Feature operations require an active part document.",
};

constexpr int kFeatureItemType = 3;
constexpr int kSuppressedStatus = 5;
constexpr std::size_t kHintLength = 200;
constexpr int kLastNameNumber = 9999;

bool IsDatum(int type) {
  return type == 923 || type == 926 || type == 931;
}

// The names that a client may have meant when it asked for a hole under the wrong one, joined by ", ".
std::wstring HoleLikeNames(const std::vector<FeatureInfo>& features) {
  std::wstring hint;
  for (const FeatureInfo& info : features) {
    if (hint.size() >= kHintLength) break;
    if (info.type != L"hole" && !NormalizedFeatureName(info.name).starts_with(L"HOLE")) continue;
    if (!hint.empty()) hint += L", ";
    hint += info.name;
  }
  return hint;
}

bool IsNameTaken(ProMdl model, ProName name) {
  ProModelitem item{};
  return ProModelitemByNameInit(model, static_cast<ProType>(kFeatureItemType), name, &item) ==
         PRO_TK_NO_ERROR;
}

// Writes the first free name of the base into `name`; false when all numbers are in use.
bool FindFreeName(ProMdl model, const std::wstring& base, ProName& name) {
  for (int i = 1; i <= kLastNameNumber; ++i) {
    CopyCut(name, Format(L"%s %d", base, i));
    if (!IsNameTaken(model, name)) return true;
    CopyCut(name, Format(L"%s_%d", base, i));
    if (!IsNameTaken(model, name)) return true;
  }
  return false;
}

}  // namespace

std::wstring FeatureTypeWord(int type) {
  const auto row = std::ranges::find(kTypeWords, type, &TypeWord::type);
  return row != std::end(kTypeWords) ? row->word : Format(L"feat_%d", type);
}

CreoMcpOperationResult RequireActiveModel(ProMdl& model) {
  return RequireActiveModelOfType(kPartType, kActiveModelWords, model);
}

CreoMcpOperationResult ReadFeatureName(const std::wstring& arguments, std::wstring& name) {
  name = JsonReadStringArgument(arguments, L"feature_name");
  if (name.empty()) return MakeFailureResult(L"'feature_name' is required.");
  return MakeSuccessResult();
}

std::wstring FeatureDisplayName(const ProFeature& feature) {
  ProFeature item = feature;
  ProName buffer{};
  if (ProModelitemNameGet(&item, buffer) != PRO_TK_NO_ERROR) return {};
  const std::wstring text = BufferText(buffer);
  const std::wstring_view name = Trim(text);
  // What the host shows in place of a name.
  if (EqualsIgnoreCase(name, L"no_name")) return {};
  return std::wstring(name);
}

ProError CollectFeatureInfo(ProFeature* feature, ProError status, FeatureVisitContext* context) {
  if (context == nullptr || feature == nullptr || status != PRO_TK_NO_ERROR) return PRO_TK_NO_ERROR;
  ProFeattype type{};
  if (ProFeatureTypeGet(feature, &type) != PRO_TK_NO_ERROR) return PRO_TK_NO_ERROR;
  if (context->sketched_curves_only && type != kSketchedCurveType) return PRO_TK_NO_ERROR;

  FeatureInfo info;
  info.type = FeatureTypeWord(type);
  info.id = feature->id;
  info.feature = *feature;
  info.name = FeatureDisplayName(*feature);
  if (info.name.empty()) {
    if (IsDatum(type)) return PRO_TK_NO_ERROR;
    info.name = Format(L"%s_%d", info.type, info.id);
  }
  ProFeatStatus feature_status{};
  ProFeatureStatusGet(feature, &feature_status);
  info.is_suppressed = static_cast<int>(feature_status) == kSuppressedStatus;

  if (context->all != nullptr) context->all->push_back(info);
  if (context->found != nullptr && !context->wanted.empty() && FeatureNamesEqual(info.name, context->wanted))
    *context->found = info;
  return PRO_TK_NO_ERROR;
}

ProError VisitFeatureInfo(ProMdl model, FeatureVisitContext& context) {
  return VisitFeatures(model, [&context](ProFeature* feature, ProError filter_status) {
    return CollectFeatureInfo(feature, filter_status, &context);
  });
}

CreoMcpOperationResult FeatureLookup(ProMdl model, const std::wstring& name, FeatureInfo& info,
                                     bool sketched_curves_only) {
  info = FeatureInfo();
  std::vector<FeatureInfo> all;
  FeatureVisitContext context{&all, name, &info, sketched_curves_only};
  const ProError status = VisitFeatureInfo(model, context);
  if (status != PRO_TK_NO_ERROR)
    return MakeFailureResult(Format(L"Failed to visit features (status=%d).", status));
  if (info.id >= 0) return MakeSuccessResult();
  if (sketched_curves_only)
    return MakeFailureResult(
        Format(L"Sketched curve feature '%s' not found. Create/commit it with api_sketch_* first.", name));

  const std::wstring hint = HoleLikeNames(all);
  if (hint.empty())
    return MakeFailureResult(
        Format(L"Feature '%s' not found. Call api_feature_list and use an exact name.", name));
  return MakeFailureResult(Format(
      L"Feature '%s' not found. Hole-like names in model: %s. Use the exact name from api_feature_hole / "
      L"api_feature_list.",
      name, hint));
}

std::wstring AssignFeatureName(ProMdl model, const ProFeature& feature, std::wstring_view base) {
  if (std::wstring given = FeatureDisplayName(feature); !given.empty()) return given;

  const std::wstring word(base);
  ProFeature item = feature;
  ProName name{};
  if (FindFreeName(model, word, name) && ProModelitemNameSet(&item, name) == PRO_TK_NO_ERROR) {
    ProSolidRegenerate(static_cast<ProSolid>(model), 0);
    return BufferText(name);
  }
  // The id makes this one unique; a host that refuses it too is told of the feature by it all the same.
  CopyCut(name, Format(L"%s_%d", word, feature.id));
  ProModelitemNameSet(&item, name);
  return BufferText(name);
}

bool ParseFeatureOperation(const std::wstring& arguments, bool& is_cut, std::wstring& message) {
  is_cut = false;
  const std::wstring word = ToLower(JsonReadStringArgument(arguments, L"operation"));
  // A new body is added to the one that stands: parts have a single body here.
  if (word.empty() || word == L"join" || word == L"add" || word == L"newbody" || word == L"new_body")
    return true;
  if (word == L"cut" || word == L"remove") {
    is_cut = true;
    return true;
  }
  message = word == L"intersect"
                ? L"Creo feature operations do not support operation='intersect'. Use 'join' or 'cut'."
                : Format(L"Unsupported operation '%s'. Use 'join' or 'cut'.", word);
  return false;
}

std::wstring FeatureNameData(std::wstring_view name) {
  return Format(L"{\"feature_name\":\"%s\"}", JsonEscape(name));
}

}  // namespace vek::feature
