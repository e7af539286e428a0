#include "bridge/argument_check.h"

#include <algorithm>

#include "bridge/field_types.h"
#include "bridge/text.h"

namespace vek::bridge {
namespace {

std::string NamesOf(const std::vector<Field>& fields) {
  std::vector<std::string> names;
  for (const Field& field : fields) names.push_back(field.name);
  return names.empty() ? "none" : Listed(names);
}

// An empty text counts as left out.
bool IsTakenForTheDefault(const Field& field, const Json& value) {
  if (!field.default_on_other || !value.is_string() || value == "") return false;
  const auto& word = value.get_ref<const std::string&>();
  return std::ranges::none_of(field.values,
                              [&word](const std::string& known) { return EqualsIgnoringCase(word, known); });
}

}  // namespace

std::vector<std::string> ArgumentMistakes(const Operation& operation, const Json& arguments) {
  std::vector<std::string> mistakes;
  for (const auto& [name, value] : arguments.items()) {
    const auto field = std::ranges::find(operation.arguments, name, &Field::name);
    if (field == operation.arguments.end()) {
      mistakes.push_back("Unknown argument '" + name + "': " + operation.name + " takes " +
                         NamesOf(operation.arguments) + ".");
    } else if (const FieldType& type = FindFieldType(field->type); !type.fits(value)) {
      mistakes.push_back("Argument '" + name + "' must be " + type.phrase + ".");
    } else if (IsTakenForTheDefault(*field, value)) {
      mistakes.push_back("Argument '" + name + "' must be one of " + Listed(field->values) + ".");
    }
  }
  return mistakes;
}

}  // namespace vek::bridge
