#include "catalogue/reference/pages.h"

#include <sstream>

namespace vek::reference {
namespace {

using bridge::Json;

// In one line, as a person would write it: blanks behind colons and commas.
std::string Spelled(const Json& value) {
  std::string text;
  if (value.is_object()) {
    for (const auto& [name, member] : value.items())
      text += (text.empty() ? "" : ", ") + Json(name).dump() + ": " + Spelled(member);
    return "{" + text + "}";
  }
  if (!value.is_array()) return value.dump();
  for (const Json& element : value) text += (text.empty() ? "" : ", ") + Spelled(element);
  return "[" + text + "]";
}

std::string Text(const Json& object, const char* name) {
  return object.value(name, std::string());
}

// For a cell of a table, where a bar would end it.
std::string Cell(std::string text) {
  for (std::size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2))
    text.insert(at, "\\");
  return text;
}

std::string Code(const std::string& text) {
  return "`" + text + "`";
}

std::string TypeAndUnit(const Json& field) {
  const std::string unit = Text(field, "unit");
  return Text(field, "type") + (unit.empty() ? "" : ", " + unit);
}

// "required", "optional", or the default.
std::string Need(const Json& argument) {
  if (argument.value("required", false)) return "required";
  const Json fallback = argument.value("default", Json());
  return fallback.is_null() ? "optional" : "default " + Code(Spelled(fallback));
}

std::string Words(const Json& values) {
  std::string words;
  for (const Json& value : values)
    words += (words.empty() ? "" : ", ") + Code(value.is_string() ? value.get<std::string>() : value.dump());
  return words;
}

std::string Limits(const Json& argument) {
  constexpr std::pair<const char*, const char*> kPhrases[] = {
      {"above", "above "}, {"minimum", "at least "}, {"below", "below "}, {"maximum", "at most "}};
  std::string limits;
  for (const auto& [word, phrase] : kPhrases)
    if (argument.contains(word))
      limits += (limits.empty() ? "" : ", ") + std::string(phrase) + argument[word].dump();
  return limits;
}

std::string Meaning(const Json& argument) {
  std::string text = Text(argument, "purpose");
  if (argument.contains("values")) {
    text += " One of " + Words(argument["values"]);
    text += argument.value("open", false) ? ", or another." : ".";
    if (argument.value("values_default_on_other", false)) text += " Any other word counts as the default.";
  }
  if (const std::string limits = Limits(argument); !limits.empty()) text += " Must be " + limits + ".";
  return Cell(text);
}

void WriteArguments(std::ostream& page, const Json& operation) {
  if (operation["arguments"].empty()) {
    page << "It takes no arguments.\n\n";
    return;
  }
  page << "| Argument | Type | | Meaning |\n| --- | --- | --- | --- |\n";
  for (const Json& argument : operation["arguments"])
    page << "| " << Code(Text(argument, "name")) << " | " << TypeAndUnit(argument) << " | " << Need(argument)
         << " | " << Meaning(argument) << " |\n";
  page << "\n";
}

void WriteFields(std::ostream& page, const Json& fields, const std::string& within) {
  for (const Json& field : fields) {
    const std::string name = within + Text(field, "name");
    page << "| " << Code(name) << " | " << TypeAndUnit(field) << " | " << Cell(Text(field, "purpose"))
         << (field.value("optional", false) ? " Not in every answer." : "") << " |\n";
    if (field.contains("fields"))
      WriteFields(page, field["fields"], name + (Text(field, "type") == "object" ? "." : "[]."));
  }
}

void WriteData(std::ostream& page, const Json& operation) {
  if (operation["data"].empty()) {
    page << "It gives no data.\n\n";
    return;
  }
  const bool array = Text(operation, "data_is") == "array";
  page << (array ? "| In each element of the data | Type | Meaning |\n" : "| Data | Type | Meaning |\n")
       << "| --- | --- | --- |\n";
  WriteFields(page, operation["data"], "");
  page << "\n";
}

bool CanSucceed(const Json& operation) {
  return !operation["messages"]["success"].empty();
}

void ListMessages(std::ostream& page, const Json& messages) {
  for (const Json& message : messages) page << "- " << Code(message.get<std::string>()) << "\n";
}

void WriteMessages(std::ostream& page, const Json& operation) {
  if (CanSucceed(operation)) {
    page << "Messages when it succeeds:\n\n";
    ListMessages(page, operation["messages"]["success"]);
    page << "\n";
  }
  page << "<details><summary>Messages when it fails</summary>\n\n";
  ListMessages(page, operation["messages"]["failure"]);
  if (operation["messages"]["failure"].empty()) page << "- none\n";
  page << "\n</details>\n\n";
}

// What the operation gives back to `POST /execute`: its example succeeds where it can.
Json Answer(const Json& operation) {
  const Json& example = operation["example"];
  Json result = {{"success", CanSucceed(operation)}, {"message", example["message"]}};
  result["data"] = example.value("data", Json());
  return result;
}

void WriteExample(std::ostream& page, const Json& operation, bool picture) {
  const Json& example = operation["example"];
  const std::string name = Text(operation, "name");
  page << "```json\n";
  if (!example["given"].empty()) {
    page << "// after\n";
    for (const Json& step : example["given"]) page << Spelled(step) << "\n";
    page << "// this\n";
  }
  page << "{" << Json(name).dump() << ": " << Spelled(example["arguments"]) << "}\n"
       << "// is answered by\n"
       << Spelled(Answer(operation)) << "\n```\n\n";
  if (picture) page << "![What comes of it](images/" << name << ".png)\n\n";
}

std::string Circumstances(const Json& operation) {
  const std::string document = Text(operation, "document");
  std::string text;
  if (document == "none")
    text = "Needs no document. ";
  else if (document == "any")
    text = "Needs an active document. ";
  else
    text = "Needs an active " + document + ". ";
  if (operation.value("read_only", false)) text += "Changes nothing. ";
  if (operation.value("destructive", false)) text += "**Can lose what undo does not bring back.** ";
  if (const Json history = operation.value("history", Json()); !history.is_null())
    text += "Can be undone: " + history.get<std::string>() + ". ";
  text.pop_back();
  return text;
}

void WriteOperation(std::ostream& page, const Json& operation, bool picture) {
  page << "## " << Text(operation, "name") << "\n\n" << Text(operation, "purpose") << "\n\n";
  page << Circumstances(operation) << "\n\n";
  for (const Json& note : operation.value("notes", Json::array()))
    page << "- " << note.get<std::string>() << "\n";
  if (!operation.value("notes", Json::array()).empty()) page << "\n";
  WriteArguments(page, operation);
  WriteData(page, operation);
  WriteMessages(page, operation);
  WriteExample(page, operation, picture);
}

void ListOperations(std::ostream& page, const Json& family, const std::string& file) {
  page << "| Operation | What it does |\n| --- | --- |\n";
  for (const Json& operation : family["operations"]) {
    const std::string name = Text(operation, "name");
    page << "| [" << name << "](" << file << "#" << name << ") | " << Cell(Text(operation, "purpose"))
         << " |\n";
  }
  page << "\n";
}

std::string FamilyPage(const Json& family, const std::set<std::string>& pictures) {
  std::ostringstream page;
  page << "# " << Text(family, "title") << "\n\n" << Text(family, "purpose") << "\n\n";
  ListOperations(page, family, "");
  for (const Json& operation : family["operations"])
    WriteOperation(page, operation, pictures.contains(Text(operation, "name")));
  page << "[All operations](README.md)\n";
  return page.str();
}

constexpr char kHowToRead[] = R"(# The operations

A client posts `{"operations": {"NAME": {ARGUMENTS}, …}}` to `/execute`; the operations run in that order, and the answer is
`{"results": {"NAME": {"success": …, "message": …, "data": …}, …}}`. [Writing good batches](../batches.md) tells what
to watch; [openapi.json](../openapi.json) describes the interface for programs.

Lengths are millimetres and angles degrees, whatever the model's own units are, unless an argument says otherwise. In messages
a word in angle brackets stands for what varies. Examples begin in an empty session; the steps under "after" prepare it.

)";

}  // namespace

std::map<std::string, std::string> WritePages(const Json& catalogue, const std::set<std::string>& pictures) {
  std::map<std::string, std::string> pages;
  std::ostringstream index;
  index << kHowToRead;
  for (const Json& family : catalogue["families"]) {
    const std::string file = Text(family, "name") + ".md";
    pages[file] = FamilyPage(family, pictures);
    index << "## [" << Text(family, "title") << "](" << file << ")\n\n" << Text(family, "purpose") << "\n\n";
    ListOperations(index, family, file);
  }
  pages["README.md"] = index.str();
  return pages;
}

}  // namespace vek::reference
