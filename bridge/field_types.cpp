#include "bridge/field_types.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string>

namespace vek::bridge {
namespace {

bool IsNumber(const Json& value) {
  return value.is_number();
}

// A number without a fraction is an integer however it is written.
bool IsInteger(const Json& value) {
  return value.is_number_integer() ||
         (value.is_number_float() && std::trunc(value.get<double>()) == value.get<double>());
}

bool IsBoolean(const Json& value) {
  return value.is_boolean();
}

bool IsString(const Json& value) {
  return value.is_string();
}

bool IsObject(const Json& value) {
  return value.is_object();
}

template <bool (*Fits)(const Json&)>
bool IsArrayOf(const Json& value) {
  return value.is_array() && std::ranges::all_of(value, Fits);
}

bool IsPair(const Json& value) {
  return value.size() == 2 && IsArrayOf<IsNumber>(value);
}

bool IsPoint(const Json& value) {
  const Json* const x = FindMember(value, "x");
  const Json* const y = FindMember(value, "y");
  return IsPair(value) || (x != nullptr && y != nullptr && IsNumber(*x) && IsNumber(*y));
}

bool IsContour(const Json& value) {
  return IsArrayOf<IsPair>(value);
}

bool IsMatrixRow(const Json& value) {
  return value.size() == 4 && IsArrayOf<IsNumber>(value);
}

bool IsMatrix(const Json& value) {
  return value.size() == 4 && IsArrayOf<IsMatrixRow>(value);
}

bool IsNumberOrNumbers(const Json& value) {
  return IsNumber(value) || IsArrayOf<IsNumber>(value);
}

// A schema of `count` elements, in the middle of a text.
#define ARRAY_OF(element) R"({"type":"array","items":)" element "}"
#define SOME_OF(element, count) \
  R"({"type":"array","items":)" element R"(,"minItems":)" #count R"(,"maxItems":)" #count "}"
#define NUMBER R"({"type":"number"})"
#define TEXT R"({"type":"string"})"
#define OBJECT R"({"type":"object"})"
#define EITHER(one, other) R"({"anyOf":[)" one "," other "]}"
#define PAIR SOME_OF(NUMBER, 2)
#define NAMED_PAIR \
  R"({"type":"object","properties":{"x":)" NUMBER R"(,"y":)" NUMBER R"(},"required":["x","y"]})"

constexpr FieldType kTypes[] = {
    {"number", "a number", NUMBER, IsNumber},
    {"integer", "an integer", R"({"type":"integer"})", IsInteger},
    {"boolean", "true or false", R"({"type":"boolean"})", IsBoolean},
    {"string", "a text", TEXT, IsString},
    {"string array", "an array of texts", ARRAY_OF(TEXT), IsArrayOf<IsString>},
    {"number array", "an array of numbers", ARRAY_OF(NUMBER), IsArrayOf<IsNumber>},
    {"number or number array", "a number or an array of numbers", EITHER(NUMBER, ARRAY_OF(NUMBER)),
     IsNumberOrNumbers},
    {"point array", R"(an array of points, each [x, y] or {"x": …, "y": …})",
     ARRAY_OF(EITHER(PAIR, NAMED_PAIR)), IsArrayOf<IsPoint>},
    {"contour array", "an array of contours, each an array of points [x, y]", ARRAY_OF(ARRAY_OF(PAIR)),
     IsArrayOf<IsContour>},
    {"matrix", "four rows of four numbers", SOME_OF(SOME_OF(NUMBER, 4), 4), IsMatrix},
    {"object", "an object", OBJECT, IsObject},
    {"object array", "an array of objects", ARRAY_OF(OBJECT), IsArrayOf<IsObject>},
};

}  // namespace

const FieldType& FindFieldType(std::string_view word) {
  const auto* const found =
      std::ranges::find(kTypes, word, [](const FieldType& type) { return std::string_view(type.word); });
  if (found == std::end(kTypes))
    throw std::invalid_argument("no type of the catalogue: " + std::string(word));
  return *found;
}

}  // namespace vek::bridge
