#include "bench/host/features/geometry_questions.h"

#include <nlohmann/json.hpp>

#include "bench/host/features/regeneration.h"
#include "bench/host/host.h"

namespace bench {
namespace {

using nlohmann::json;

// Asks, and hands the answer to `read`.
template <typename Read>
ProError Ask(const Model& model, const char* what, const json& question, Read&& read) {
  if (!model.geometry) return PRO_TK_BAD_CONTEXT;
  std::string fields = question.dump();
  fields = fields.substr(1, fields.size() - 2) + R"(,"recipes":)" + model.geometry->recipes;
  const auto answer = TheHost().kernel.Ask(what, fields);
  if (!answer) return PRO_TK_COMM_ERROR;
  if (answer->contains("refused")) return PRO_TK_GENERAL_ERROR;
  try {
    read(*answer);
    return PRO_TK_NO_ERROR;
  } catch (const json::exception& exception) {
    Complain(std::string("the geometry kernel's answer can't be read: ") + exception.what());
    return PRO_TK_COMM_ERROR;
  }
}

}  // namespace

ProError AskForSurfacePoint(const Model& model, const FaceInfo& face, double u, double v, SurfacePoint& at) {
  return Ask(model, "evaluate", {{"face", face.key}, {"u", u}, {"v", v}}, [&](const json& answer) {
    answer.at("point").get_to(at.point);
    answer.at("du").get_to(at.du);
    answer.at("dv").get_to(at.dv);
    answer.at("duu").get_to(at.duu);
    answer.at("duv").get_to(at.duv);
    answer.at("dvv").get_to(at.dvv);
    answer.at("normal").get_to(at.normal);
  });
}

ProError AskForEdgePoint(const Model& model, const EdgeInfo& edge, double t, EdgePoint& at) {
  return Ask(model, "evaluate", {{"edge", edge.key}, {"t", t}}, [&](const json& answer) {
    answer.at("point").get_to(at.point);
    answer.at("dt").get_to(at.dt);
    answer.at("dtt").get_to(at.dtt);
  });
}

ProError AskForExtremes(const Model& model, const FaceInfo& face, const Vector3& direction, Vector3& low,
                        Vector3& high) {
  return Ask(model, "extremes", {{"face", face.key}, {"direction", direction}}, [&](const json& answer) {
    answer.at("low").get_to(low);
    answer.at("high").get_to(high);
  });
}

}  // namespace bench
