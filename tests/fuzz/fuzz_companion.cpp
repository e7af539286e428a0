// What the companion application sends, and what is sent to it. The input is the body of a request to open a
// part; its lines are also the values of a measurement.
//
// A request is handed on exactly when it is answered with 200, and then with a path that is there or a plain
// name. Of JSON without nesting and escapes the flat reader reads what a strict parser does. What is sent to
// the companion is JSON as long as no value holds what JSON must escape.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "addin/companion/companion_messages.h"
#include "addin/companion/measurement_text.h"
#include "addin/platform/files.h"
#include "addin/server/json_writer.h"
#include "addin/server/part_opening.h"
#include "addin/text/path_text.h"
#include "addin/text/wide_text.h"
#include "tests/fuzz/fuzz_text.h"

using nlohmann::json;
using vek::EncodeUtf8;
using vek::fuzz::Require;

namespace {

void OpenPart(const std::wstring& body) {
  vek::HttpServerRequest request;
  request.body = body;
  vek::HttpServerResponse response;
  std::vector<vek::FileDownloadInfo> handed_on;
  const auto take = [&](const vek::FileDownloadInfo& info) { handed_on.push_back(info); };
  vek::HandlePartOpeningRequest(response, request, take,
                                [](std::wstring_view line) { Require(!line.empty()); });
  const auto known = {200, 400, 404};
  Require(std::ranges::find(known, response.statusCode) != known.end());
  Require(response.body.starts_with(L"<html><body><h1>") && response.body.ends_with(L"</body></html>"));
  Require(handed_on.size() == (response.statusCode == 200 ? 1 : 0));
  for (const vek::FileDownloadInfo& info : handed_on)
    Require(info.downloadPath.empty() ? vek::IsPlainFileName(info.fileName)
                                      : vek::PathExists(info.downloadPath));
}

bool NeedsEscapes(const std::wstring& text) {
  return vek::JsonEscape(text) != text;
}

// A flat object as a client writes it, without blanks.
void CompareFlatFields(const std::wstring& body) {
  const json object = json::parse(EncodeUtf8(body), nullptr, false);
  if (!object.is_object()) return;
  for (const auto& [name, value] : object.items())
    if (value.is_structured() || NeedsEscapes(vek::DecodeUtf8(name)) ||
        (value.is_string() && NeedsEscapes(vek::DecodeUtf8(value.get<std::string>()))))
      return;
  const std::wstring text = vek::DecodeUtf8(object.dump());
  for (const auto& [name, value] : object.items()) {
    const std::string expected = value.is_string() ? value.get<std::string>() : value.dump();
    Require(EncodeUtf8(vek::ReadFlatField(text, vek::DecodeUtf8(name))) == expected);
  }
  vek::FileDownloadInfo info;
  Require(vek::ParseFileDownloadInfo(text, info, [](std::wstring_view) {}));
  const auto path = object.find("downloadPath");
  if (path != object.end() && path->is_string() && !path->get<std::string>().empty())
    Require(EncodeUtf8(info.downloadPath) == path->get<std::string>());
}

// Nothing is read that doesn't stand in the text.
void ReadAnyField(const std::wstring& body) {
  for (const wchar_t* key : {L"downloadPath", L"loc", L"x", L"replaceExisting", L""}) {
    const std::wstring value = vek::ReadFlatField(body, key, L"LocationInfo");
    Require(body.find(value) != std::wstring::npos);
  }
}

void SendFilePath(const std::wstring& path) {
  const json message = json::parse(EncodeUtf8(vek::FilePathMessage(path)));
  std::wstring expected = path;
  std::ranges::replace(expected, L'\\', L'/');
  Require(message == json{{"filePath", EncodeUtf8(expected)}});
}

void SendMeasurement(const std::vector<std::wstring>& values) {
  vek::FaceMeasurement face;
  std::size_t next = 0;
  std::wstring* const fields[] = {&face.area,        &face.perimeter,    &face.radius,    &face.diameter,
                                  &face.centerX,     &face.centerY,      &face.centerZ,   &face.normal,
                                  &face.surfaceType, &face.holeDiameter, &face.holeDepth, &face.threadSize,
                                  &face.standard,    &face.threadClass,  &face.holeType};
  for (std::wstring* field : fields) *field = values[next++ % values.size()];
  for (const bool is_hole : {false, true}) {
    face.isHole = is_hole;
    const json message = json::parse(EncodeUtf8(vek::FaceMeasurementMessage(face)));
    Require(message.at("Area") == EncodeUtf8(face.area) && message.at("Normal") == EncodeUtf8(face.normal));
    Require(message.at("CenterPoint").at("Z") == EncodeUtf8(face.centerZ) && message.at("IsHole") == is_hole);
    const json& hole = message.at("SelectedHoleInfo");
    Require(is_hole ? hole.at("HoleType") == EncodeUtf8(face.holeType) : hole.is_null());
  }
}

void MeasureIn(const std::wstring& unit_name) {
  const std::wstring unit = vek::LengthUnitWord(unit_name);
  const auto known = {L"m", L"in", L"cm", L"mm"};
  Require(std::ranges::find(known, unit) != known.end());
  Require(unit == vek::LengthUnitWord(vek::ToLower(unit_name)));
  const double value = vek::ReadLeadingNumber(unit_name);
  Require(vek::FormatLength(value, unit).ends_with(unit) && !vek::ThreadClassWord(value).empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::wstring body = vek::fuzz::TextOf(vek::fuzz::Bytes(data, size));
  OpenPart(body);
  ReadAnyField(body);
  CompareFlatFields(body);
  MeasureIn(body);
  std::vector<std::wstring> values;
  for (std::size_t at = 0; at <= body.size();) {
    const std::size_t end = std::min(body.find(L'\n', at), body.size());
    std::wstring value = body.substr(at, end - at);
    std::wstring plain;
    for (const wchar_t c : value)
      if (!NeedsEscapes({c}) || c == L'\\') plain += c;
    SendFilePath(plain);
    std::erase(plain, L'\\');
    values.push_back(std::move(plain));
    at = end + 1;
  }
  SendMeasurement(values);
  return 0;
}
