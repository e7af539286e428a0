#include "bench/kernel/json_fields.h"

#include <cmath>
#include <limits>
#include <utility>

namespace bench::kernel {

using nlohmann::json;

namespace {

std::string Quoted(const std::string& key) {
  return "'" + key + "'";
}

}  // namespace

Fields::Fields(const json& object, std::string where) : object_(object), where_(std::move(where)) {
  if (!object_.is_object()) throw BadRequest(where_ + " must be an object");
}

void Fields::Complain(const std::string& about) const {
  throw BadRequest(where_ + ": " + about);
}

const json& Fields::Member(const char* key) const {
  const auto found = object_.find(key);
  if (found == object_.end()) Complain(Quoted(key) + " is missing");
  return *found;
}

double Fields::AsNumber(const json& value, const std::string& what) const {
  if (!value.is_number()) Complain(what + " must be a number");
  const double number = value.get<double>();
  if (!std::isfinite(number)) Complain(what + " must be finite");
  return number;
}

double Fields::Number(const char* key) const {
  return AsNumber(Member(key), Quoted(key));
}

double Fields::Number(const char* key, double otherwise) const {
  return Has(key) ? Number(key) : otherwise;
}

int Fields::AsInteger(const json& value, const std::string& what) const {
  if (!value.is_number_integer()) Complain(what + " must be an integer");
  const auto number = value.get<std::int64_t>();
  if (number < 0 || number > std::numeric_limits<int>::max()) Complain(what + " is out of range");
  return static_cast<int>(number);
}

int Fields::Integer(const char* key) const {
  return AsInteger(Member(key), Quoted(key));
}

bool Fields::Flag(const char* key, bool otherwise) const {
  if (!Has(key)) return otherwise;
  const json& value = Member(key);
  if (!value.is_boolean()) Complain(Quoted(key) + " must be true or false");
  return value.get<bool>();
}

std::string Fields::Text(const char* key) const {
  const json& value = Member(key);
  if (!value.is_string()) Complain(Quoted(key) + " must be a text");
  return value.get<std::string>();
}

const json& Fields::Array(const char* key) const {
  const json& value = Member(key);
  if (!value.is_array()) Complain(Quoted(key) + " must be an array");
  return value;
}

std::vector<std::string> Fields::Texts(const char* key) const {
  std::vector<std::string> texts;
  for (const json& text : Array(key)) {
    if (!text.is_string()) Complain("each of " + Quoted(key) + " must be a text");
    texts.push_back(text.get<std::string>());
  }
  return texts;
}

gp_Pnt2d Fields::AsPoint2d(const json& value, const std::string& what) const {
  if (!value.is_array() || value.size() != 2) Complain(what + " must be [x, y]");
  return {AsNumber(value[0], what), AsNumber(value[1], what)};
}

gp_Pnt2d Fields::Point2d(const char* key) const {
  return AsPoint2d(Member(key), Quoted(key));
}

gp_XYZ Fields::Vector(const char* key) const {
  const json& value = Member(key);
  const std::string what = Quoted(key);
  if (!value.is_array() || value.size() != 3) Complain(what + " must be [x, y, z]");
  return {AsNumber(value[0], what), AsNumber(value[1], what), AsNumber(value[2], what)};
}

Fields Fields::Object(const char* key) const {
  return {Member(key), where_ + ", " + Quoted(key)};
}

}  // namespace bench::kernel
