// Sketch planes and the references that orient a sketch on them.
#pragma once

#include <ProModelitem.h>

#include <string_view>

#include "addin/ops/sketch/session.h"

namespace vek::sketch {

// The two kinds of item that the host takes for a datum plane. Which one it accepts under a sketch shows only
// once a feature is asked for.
enum class PlaneForm { kSurface, kDatum };

// The datum plane of that name: the first surface of the feature called so, or else the plane itself.
bool FindDatumPlane(ProMdl model, std::wstring_view name, ProModelitem& item);

// Chooses the orientation reference of a new sketch and what its normal becomes, from the session's plane.
// `has_orient` tells whether the model has one of RIGHT, TOP and FRONT beside that plane.
void ChooseOrientation(SketchSession& session);

// Looks plane and orientation up again as items of that form. The session takes them over only when both are
// found; its orientation direction is written before that is known.
bool ResolvePlaneRefs(SketchSession& session, PlaneForm form);

// One line of the log with an item under a title.
void LogItem(std::wstring_view title, const ProModelitem& item);

}  // namespace vek::sketch
