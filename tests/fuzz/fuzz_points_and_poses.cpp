// Points, contours, rows of numbers and transforms, as they stand in requests. What is JSON of the right
// shape is read as a strict parser reads it, what was read and is written out again is read the same, and a
// run of numbers ends.
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <vector>

#include "addin/ops/assembly/pose_text.h"
#include "addin/ops/sketch/point_array.h"
#include "tests/fuzz/fuzz_text.h"

using nlohmann::json;
using vek::fuzz::Require;

namespace {

using vek::sketch::PlanePoint;
using Points = std::vector<PlanePoint>;

bool IsNumber(const json& value) {
  return value.is_number();
}

bool IsPoint(const json& value) {
  if (value.is_array()) return value.size() >= 2 && std::ranges::all_of(value, IsNumber);
  if (!value.is_object() || !value.contains("x") || !value.contains("y")) return false;
  for (const auto& [key, number] : value.items())
    if (!number.is_number() || key.find_first_of("[]{}\"\\") != std::string::npos) return false;
  return true;
}

bool IsListOfPoints(const json& value) {
  return value.is_array() && std::ranges::all_of(value, IsPoint);
}

bool IsListOfContours(const json& value) {
  return value.is_array() && std::ranges::all_of(value, IsListOfPoints);
}

bool IsTransform(const json& value) {
  if (!value.is_array() || value.size() < 4) return false;
  for (const json& row : value)
    if (!IsListOfPoints(json::array({row})) || !row.is_array() || row.size() < 4) return false;
  return true;
}

void RequireEqual(const PlanePoint& point, const json& expected) {
  const json& x = expected.is_array() ? expected[0] : expected["x"];
  const json& y = expected.is_array() ? expected[1] : expected["y"];
  Require(point.x == x.get<double>() && point.y == y.get<double>());
}

void RequireEqual(const Points& points, const json& expected) {
  Require(points.size() == expected.size());
  for (std::size_t i = 0; i < points.size(); ++i) RequireEqual(points[i], expected[i]);
}

// Written by the strict parser's own writer; empty when a number is none that JSON can hold.
std::wstring Written(const Points& points) {
  json list = json::array();
  for (const PlanePoint& point : points) {
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) return {};
    list.push_back({point.x, point.y});
  }
  return vek::DecodeUtf8(list.dump());
}

void CheckPoints(const std::wstring& text, const json& strict) {
  Points points, again;
  const bool read = vek::sketch::ParsePointArray(text, points);
  Require(points.size() <= text.size() / 2 && (!read || !points.empty()));
  if (IsListOfPoints(strict)) {
    Require(read == !strict.empty());
    RequireEqual(points, strict);
  }
  const std::wstring written = read ? Written(points) : std::wstring();
  if (written.empty()) return;
  Require(vek::sketch::ParsePointArray(written, again) && Written(again) == written);
}

void CheckContours(const std::wstring& text, const json& strict) {
  std::vector<Points> contours;
  const bool read = vek::sketch::ParseContourArray(text, contours);
  Require(read == !contours.empty());
  for (const Points& contour : contours) Require(contour.size() >= 2);
  if (!IsListOfContours(strict) || !text.starts_with(L'[')) return;
  std::size_t next = 0;
  for (const json& contour : strict)
    if (contour.size() >= 2) {
      Require(next < contours.size());
      RequireEqual(contours[next++], contour);
    }
  Require(next == contours.size());
}

void CheckTransform(const std::wstring& text, const json& strict) {
  const auto rows = vek::assembly::ReadTransformRows(text);
  if (IsTransform(strict)) {
    Require(rows.has_value());
    for (std::size_t row = 0; row < 4; ++row)
      for (std::size_t column = 0; column < 4; ++column)
        Require((*rows)[row][column] == strict[row][column].get<double>());
  }
  if (!rows) return;
  json list = json::array();
  for (const auto& row : *rows) {
    for (const double number : row)
      if (!std::isfinite(number)) return;
    list.push_back(row);
  }
  const auto again = vek::assembly::ReadTransformRows(vek::DecodeUtf8(list.dump()));
  Require(again && *again == *rows);
}

std::ptrdiff_t Quotes(const std::string& text) {
  return std::ranges::count(text, '"');
}

// What a strict parser reads, null where it and ours differ by design: it ends at a NUL and resolves escapes
// in names, and of fields with the same name it keeps the last, where ours take the first.
json StrictlyRead(const std::wstring& text) {
  if (text.find_first_of(std::wstring_view(L"\0\\", 2)) != std::wstring::npos) return {};
  const std::string bytes = vek::EncodeUtf8(text);
  json strict = json::parse(bytes, nullptr, false);
  if (!strict.is_discarded() && Quotes(strict.dump()) != Quotes(bytes)) return {};
  return strict;
}

void CheckNumberRun(const std::wstring& text) {
  constexpr double kUntouched = 0.25;
  std::size_t index = 0;
  for (;;) {
    const std::size_t before = index;
    double value = kUntouched;
    if (!vek::assembly::ReadNextNumber(text, index, value))
      return Require(value == kUntouched && index <= text.size());
    Require(index > before && index <= text.size() && !std::isnan(value));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring text = vek::fuzz::TextOf(vek::fuzz::Bytes(data, size));
  const json strict = StrictlyRead(text);
  CheckPoints(text, strict);
  CheckContours(text, strict);
  CheckTransform(text, strict);
  CheckNumberRun(text);
  return 0;
}
