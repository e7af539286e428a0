#include "bridge/argument_check.h"

#include <algorithm>

#include "bridge/field_types.h"

namespace vek::bridge {
namespace {

std::string NamesOf(const std::vector<Field>& fields) {
  std::string names;
  for (const Field& field : fields) names += (names.empty() ? "" : ", ") + field.name;
  return names;
}

void CheckObject(const std::vector<Field>& fields, const Json& object, const std::string& path,
                 const std::string& taker, std::vector<std::string>& mistakes);

void CheckValue(const Field& field, const Json& value, const std::string& path,
                std::vector<std::string>& mistakes) {
  const FieldType& type = FindFieldType(field.type);
  if (!type.fits(value)) {
    mistakes.push_back("Argument '" + path + "' must be " + type.phrase + ".");
    return;
  }
  if (field.fields.empty()) return;
  if (value.is_object()) return CheckObject(field.fields, value, path + ".", "'" + path + "'", mistakes);
  for (std::size_t i = 0; i < value.size(); ++i) {
    const std::string element = path + "[" + std::to_string(i) + "]";
    CheckObject(field.fields, value[i], element + ".", "'" + element + "'", mistakes);
  }
}

// `path` stands before the names of the object's members.
void CheckObject(const std::vector<Field>& fields, const Json& object, const std::string& path,
                 const std::string& taker, std::vector<std::string>& mistakes) {
  for (const auto& [name, value] : object.items()) {
    const auto field = std::ranges::find(fields, name, &Field::name);
    if (field != fields.end()) {
      CheckValue(*field, value, path + name, mistakes);
    } else if (fields.empty()) {
      mistakes.push_back("Unknown argument '" + path + name + "': " + taker + " takes none.");
    } else {
      mistakes.push_back("Unknown argument '" + path + name + "': " + taker + " takes " + NamesOf(fields) +
                         ".");
    }
  }
}

}  // namespace

std::vector<std::string> ArgumentMistakes(const Operation& operation, const Json& arguments) {
  std::vector<std::string> mistakes;
  CheckObject(operation.arguments, arguments, "", operation.name, mistakes);
  return mistakes;
}

}  // namespace vek::bridge
