#include "bridge/schemas.h"

#include <utility>

#include "bridge/field_types.h"

namespace vek::bridge {
namespace {

// The catalogue's words for limits, and JSON Schema's.
constexpr std::pair<const char*, const char*> kLimits[] = {{"above", "exclusiveMinimum"},
                                                           {"minimum", "minimum"},
                                                           {"maximum", "maximum"},
                                                           {"below", "exclusiveMaximum"}};

Json ObjectSchema(const std::vector<Field>& fields, bool closed);

std::string WordsOf(const std::vector<Json>& values) {
  std::string words;
  for (const Json& value : values)
    words += (words.empty() ? "" : ", ") + (value.is_string() ? value.get<std::string>() : WriteJson(value));
  return words;
}

std::string DescriptionOf(const Field& field, const std::vector<Field>& siblings) {
  std::string text = field.purpose;
  if (!field.unit.empty()) text += " Unit: " + field.unit + ".";
  if (!field.values.empty() && field.open) text += " Words: " + WordsOf(field.values) + ", and others.";
  if (field.one_of.empty()) return text;
  // Said in words, because model interfaces refuse a schema that says it.
  std::string group;
  for (const Field& sibling : siblings)
    if (sibling.one_of == field.one_of) group += (group.empty() ? "" : ", ") + sibling.name;
  return text + " One of these is required: " + group + ".";
}

Json FieldSchema(const Field& field, const std::vector<Field>& siblings, bool closed) {
  Json schema = Json::parse(FindFieldType(field.type).schema);
  if (!field.fields.empty()) {
    Json element = ObjectSchema(field.fields, closed);
    if (field.type == "object") {
      schema = std::move(element);
    } else {
      schema["items"] = std::move(element);
    }
  }
  schema["description"] = DescriptionOf(field, siblings);
  if (!field.values.empty() && !field.open) schema["enum"] = field.values;
  for (const auto& [word, keyword] : kLimits)
    if (const Json* const limit = FindMember(field.limits, word)) schema[keyword] = *limit;
  if (!field.default_value.is_null()) schema["default"] = field.default_value;
  return schema;
}

Json ObjectSchema(const std::vector<Field>& fields, bool closed) {
  Json schema = {{"type", "object"}, {"properties", Json::object()}};
  Json required = Json::array();
  for (const Field& field : fields) {
    schema["properties"][field.name] = FieldSchema(field, fields, closed);
    // Of what goes in the required is told, of what comes out the optional.
    if (closed ? field.required : !field.optional) required.push_back(field.name);
  }
  if (!required.empty()) schema["required"] = std::move(required);
  if (closed) schema["additionalProperties"] = false;
  return schema;
}

}  // namespace

Json ArgumentsSchema(const Operation& operation) {
  return ObjectSchema(operation.arguments, true);
}

Json DataSchema(const Operation& operation) {
  Json schema = ObjectSchema(operation.data, false);
  if (!operation.data_is_array) return schema;
  return {{"type", "array"}, {"items", std::move(schema)}};
}

}  // namespace vek::bridge
