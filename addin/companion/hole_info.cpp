#include "addin/companion/hole_info.h"

#include <numbers>

#include "addin/companion/measurement_text.h"
#include "addin/platform/log.h"
#include "addin/text/format.h"

namespace vek {
namespace {

constexpr int kCylinder = 36;
constexpr int kExtruded = 44;
constexpr int kSplineCylinder = 48;

double ReadDiameter(ProSurface surface, HoleInfo& info) {
  ProUvParam start{0, 0};
  double diameter = 0;
  if (ProSurfaceDiameterEval(surface, start, &diameter) != PRO_TK_NO_ERROR) {
    info.holeDiameter = L"0mm";
    LogShell(L"Failed to get hole diameter");
    return 0;
  }
  info.holeDiameter = Format(L"%lfmm", diameter);
  LogShell(Format(L"Hole Diameter: %.3f", diameter));
  return diameter;
}

// The wall's area is that of a cylinder of the hole's depth.
void EstimateDepth(ProSurface surface, double diameter, HoleInfo& info) {
  info.holeDepth = L"0mm";
  double area = 0;
  if (ProSurfaceAreaEval(surface, &area) != PRO_TK_NO_ERROR) {
    LogShell(L"Failed to get surface area for depth estimation");
    return;
  }
  if (!(diameter > 0)) return;
  const double depth = area / (diameter * std::numbers::pi);
  info.holeDepth = Format(L"%lfmm", depth);
  LogShell(Format(L"Estimated Hole Depth: %.3f", depth));
}

}  // namespace

void ExtractHoleInfo(ProGeomitem& item, HoleInfo& info) {
  ProSurface surface = nullptr;
  if (ProGeomitemToSurface(&item, &surface) != PRO_TK_NO_ERROR) {
    LogShell(L"Failed to convert ProGeomitem to ProSurface");
    return;
  }
  ProSrftype type = PRO_SRF_NONE;
  if (ProSurfaceTypeGet(surface, &type) != PRO_TK_NO_ERROR) {
    LogShell(L"Failed to get surface type");
    return;
  }
  if (type != kCylinder && type != kExtruded && type != kSplineCylinder) {
    info = {.threadSize = L"N/A",
            .holeDiameter = L"0",
            .holeDepth = L"0",
            .standard = L"Unknown",
            .threadClass = L"N/A",
            .holeType = L"Non-Cylindrical"};
    LogShell(L"Surface is not cylindrical - cannot extract hole information");
    return;
  }
  const double diameter = ReadDiameter(surface, info);
  EstimateDepth(surface, diameter, info);
  info.holeType = type == kCylinder   ? L"Straight Cylindrical"
                  : type == kExtruded ? L"Tapered Cylindrical"
                                      : L"Spline Cylindrical";
  info.standard = L"Standard";
  info.threadClass = ThreadClassWord(diameter);
  info.threadSize = diameter > 0 ? Format(L"M%.1f", diameter) : L"N/A";
  LogShell(L"Successfully extracted hole information from surface");
}

}  // namespace vek
