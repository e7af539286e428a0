#include "bridge/schemas.h"

#include <utility>

#include "bridge/field_types.h"
#include "bridge/text.h"

namespace vek::bridge {
namespace {

// The catalogue's words for limits, and JSON Schema's.
constexpr std::pair<const char*, const char*> kLimits[] = {{"above", "exclusiveMinimum"},
                                                           {"minimum", "minimum"},
                                                           {"maximum", "maximum"},
                                                           {"below", "exclusiveMaximum"}};

Json ObjectSchema(const std::vector<Field>& fields, bool closed);

std::string DescriptionOf(const Field& field) {
  std::string text = field.purpose;
  if (!field.unit.empty()) text += " Unit: " + field.unit + ".";
  if (!field.values.empty() && field.open) text += " Words: " + Listed(field.values) + ", and others.";
  return text;
}

Json FieldSchema(const Field& field, bool closed) {
  Json schema = Json::parse(FindFieldType(field.type).schema);
  if (!field.fields.empty()) {
    Json element = ObjectSchema(field.fields, closed);
    if (field.type == "object") {
      schema = std::move(element);
    } else {
      schema["items"] = std::move(element);
    }
  }
  schema["description"] = DescriptionOf(field);
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
    schema["properties"][field.name] = FieldSchema(field, closed);
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
