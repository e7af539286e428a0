#include "catalogue/reference/openapi.h"

#include "bridge/catalogue.h"
#include "bridge/schemas.h"

namespace vek::reference {
namespace {

using bridge::Catalogue;
using bridge::Json;
using bridge::Operation;

Json Reference(const std::string& schema) {
  return {{"$ref", "#/components/schemas/" + schema}};
}

Json Answer(const std::string& description, const char* media_type, Json schema) {
  return {{"description", description}, {"content", {{media_type, {{"schema", std::move(schema)}}}}}};
}

Json Failure(const std::string& description) {
  return Answer(description, "application/json", Reference("Error"));
}

// Of every operation: its arguments, and what stands under its name in the results.
Json OperationSchemas(const Catalogue& catalogue) {
  Json schemas = Json::object();
  for (const Operation& operation : catalogue.operations()) {
    Json arguments = bridge::ArgumentsSchema(operation);
    arguments["title"] = operation.name;
    arguments["description"] = operation.purpose;
    schemas[operation.name] = std::move(arguments);
    Json result = Reference("Result");
    if (!operation.data.empty())
      result = {
          {"allOf",
           {Reference("Result"),
            {{"properties", {{"data", {{"oneOf", {bridge::DataSchema(operation), {{"type", "null"}}}}}}}}}}}};
    schemas[operation.name + ".result"] = std::move(result);
  }
  return schemas;
}

Json ByName(const Catalogue& catalogue, const std::string& suffix) {
  Json properties = Json::object();
  for (const Operation& operation : catalogue.operations())
    properties[operation.name] = Reference(operation.name + suffix);
  return {{"type", "object"}, {"properties", std::move(properties)}};
}

Json Schemas(const Catalogue& catalogue) {
  Json batch = ByName(catalogue, "");
  batch["description"] = "Runs in this order. A name can stand here once.";
  batch["minProperties"] = 1;
  Json schemas = {
      {"Batch",
       {{"type", "object"},
        {"properties", {{"operations", std::move(batch)}}},
        {"required", {"operations"}}}},
      {"Results",
       {{"type", "object"},
        {"properties", {{"results", ByName(catalogue, ".result")}}},
        {"required", {"results"}}}},
      {"Result",
       {{"type", "object"},
        {"properties",
         {{"success", {{"type", "boolean"}}},
          {"message", {{"type", "string"}, {"description", "What was done, or why not."}}},
          {"data",
           {{"description", "The operation's data; null when it has none, as with most failures."}}}}},
        {"required", {"success", "message", "data"}}}},
      {"Error",
       {{"type", "object"}, {"properties", {{"error", {{"type", "string"}}}}}, {"required", {"error"}}}},
      {"Health",
       {{"type", "object"},
        {"properties",
         {{"status", {{"const", "ok"}}},
          {"addinReachable", {{"type", "boolean"}}},
          {"provider", {{"type", "string"}}},
          {"server", {{"type", "string"}}},
          {"listenPort", {{"type", "integer"}}},
          {"registeredOperations", {{"type", "array"}, {"items", {{"type", "string"}}}}}}}}},
      {"Opening",
       {{"type", "object"},
        {"description",
         "Which model file to open, and how. The add-in reads it field by field and takes no nested "
         "objects."},
        {"properties",
         {{"downloadPath",
           {{"type", "string"}, {"description", "The model file, or the name of one in the workspace."}}},
          {"placeLikeComponentTitle",
           {{"type", "string"},
            {"description", "Replaces (a part) or inspects (an assembly) the components of this title."}}},
          {"placeLikeFilePath", {{"type", "string"}}},
          {"replaceExisting", {{"type", "boolean"}, {"default", false}}}}}}}};
  schemas.update(OperationSchemas(catalogue));
  return schemas;
}

Json ExecutePath() {
  return {{"post",
           {{"operationId", "execute"},
            {"summary", "Runs a batch of operations on Creo's main thread."},
            {"description",
             "At most 262,143 bytes, headers included. The answer comes when the whole batch is done, after "
             "120 s at the latest. A failed operation is a result like any other and stops nothing."},
            {"requestBody",
             {{"required", true}, {"content", {{"application/json", {{"schema", Reference("Batch")}}}}}}},
            {"responses",
             {{"200", Answer("The result of each operation, by its name.", "application/json",
                             Reference("Results"))},
              {"400", Failure("The request is empty, has no operations, or is not JSON.")},
              {"500", Failure("The batch could not be run.")},
              {"503", Failure("The add-in is starting or stopping.")},
              {"504", Failure("The batch was not done in time; it may still run to its end.")}}}}}};
}

Json HealthPath() {
  return {{"get",
           {{"operationId", "health"},
            {"summary", "Tells that the add-in is there, and lists the operations it knows."},
            {"responses",
             {{"200", Answer("It is there.", "application/json", Reference("Health"))},
              {"503", Failure("The add-in is starting or stopping.")}}}}}};
}

Json OpeningPath() {
  const Json page = {{"type", "string"}};
  return {{"post",
           {{"operationId", "open"},
            {"summary", "Opens a model file, replaces a part with it, or inspects against it."},
            {"description", "The answer tells that the request was taken, not what came of it."},
            {"requestBody",
             {{"required", true}, {"content", {{"application/json", {{"schema", Reference("Opening")}}}}}}},
            {"responses",
             {{"200", Answer("Taken.", "text/html", page)},
              {"400", Answer("The request is empty or names no file.", "text/html", page)},
              {"404", Answer("There is no such file.", "text/html", page)},
              {"500", Answer("The request could not be taken.", "text/html", page)}}}}}};
}

}  // namespace

Json WriteOpenApi(const Json& document, const std::string& version) {
  const Catalogue catalogue(document);
  return {{"openapi", "3.1.0"},
          {"info",
           {{"title", "VekCreoAddin"},
            {"version", version},
            {"summary", "Automation bridge for Creo Parametric."},
            {"description", "What the add-in serves on the machine on which Creo runs."},
            {"license", {{"name", "All rights reserved"}, {"identifier", "LicenseRef-VekCreoAddin"}}}}},
          {"servers", {{{"url", "http://localhost:4001"}}}},
          {"paths", {{"/execute", ExecutePath()}, {"/health", HealthPath()}, {"/", OpeningPath()}}},
          {"components", {{"schemas", Schemas(catalogue)}}}};
}

}  // namespace vek::reference
