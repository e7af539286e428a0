// Scanning a batch as large as a request may be and reading ten arguments of each operation, against
// RapidJSON parsing the same bytes into a document and looking the same keys up.
//
// The readers start from decoded text, RapidJSON from the bytes; a row of its own has the decoding in it.
// What a compiler makes of the two differs more than the two do, so that there is a program by each.
#ifdef __SSE2__
#define RAPIDJSON_SSE2  // its walk over sixteen bytes at once, since ours has one
#endif
#include <rapidjson/document.h>

#include <cstdio>
#include <ctime>
#include <string>

#include "addin/server/json_reader.h"
#include "addin/text/utf8.h"
#include "benchmarks/figure.h"

namespace {

constexpr std::size_t kBatchBytes = 262'143;
constexpr int kTurns = 300;
constexpr double kBudget = 1;

// An operation with ten short arguments.
std::string ShortOperation(int number) {
  const std::string n = std::to_string(number);
  return "\"api_feature_extrude_advanced_" + n + "\":{\"name\":\"Boss " + n + "\",\"sketch_name\":\"SKETCH_" +
         n + "\",\"distance_mm\":" + std::to_string(10 + number % 90) + ".5" +
         ",\"operation\":\"join\",\"direction\":\"positive\",\"taper_deg\":-2.25,\"symmetric\":false"
         ",\"until\":\"blind\",\"offset_mm\":0.125,\"body_name\":\"main body\"}";
}

// The same with a list of forty points among them, as sketches have them; the list itself is not read.
std::string OperationWithPoints(int number) {
  std::string operation = ShortOperation(number);
  std::string points = ",\"points\":[";
  for (int i = 0; i < 40; ++i)
    points += (i == 0 ? "[" : ",[") + std::to_string(i * 3) + ".25,-" + std::to_string(number % 100) + ".5]";
  return operation.insert(operation.rfind(",\"until\""), points + "]");
}

std::string Batch(std::string (*one_operation)(int)) {
  std::string batch = "{\"operations\":{" + one_operation(0);
  for (int i = 1;; ++i) {
    const std::string next = "," + one_operation(i);
    if (batch.size() + next.size() + 2 > kBatchBytes) break;
    batch += next;
  }
  batch += "}}";
  // Blanks behind the last bracket make up the full size for both readers.
  batch.resize(kBatchBytes, ' ');
  return batch;
}

const char* const kTexts[] = {"name", "sketch_name", "operation", "direction", "until", "body_name"};
const wchar_t* const kWideTexts[] = {L"name",      L"sketch_name", L"operation",
                                     L"direction", L"until",       L"body_name"};
const char* const kNumbers[] = {"distance_mm", "taper_deg", "offset_mm"};
const wchar_t* const kWideNumbers[] = {L"distance_mm", L"taper_deg", L"offset_mm"};

// What a reading adds up to, so that both sides are seen to have read the same.
struct Sum {
  std::size_t operations = 0;
  std::size_t characters = 0;
  double numbers = 0;
  bool operator==(const Sum&) const = default;
};

Sum ReadWithOurs(const std::wstring& body) {
  Sum sum;
  vek::OperationList operations;
  std::wstring error;
  vek::ParseOperationsObject(vek::JsonFindAnywhere(body, L"operations"), operations, error);
  for (const auto& [name, arguments] : operations) {
    ++sum.operations;
    for (const wchar_t* const key : kWideTexts)
      sum.characters += vek::JsonReadStringArgument(arguments, key).size();
    for (const wchar_t* const key : kWideNumbers) {
      double number = 0;
      vek::JsonReadNumber(arguments, key, number);
      sum.numbers += number;
    }
    sum.characters += vek::JsonReadBool(arguments, L"symmetric", true) ? 1 : 0;
  }
  return sum;
}

Sum ReadWithRapidJson(const std::string& body) {
  Sum sum;
  rapidjson::Document document;
  document.Parse(body.data(), body.size());
  const auto& operations = document["operations"];
  // By iterator: the library's comparison is ambiguous to a range in C++20.
  for (auto operation = operations.MemberBegin();
       operation.operator->() != operations.MemberEnd().operator->(); ++operation) {
    ++sum.operations;
    const auto& arguments = operation->value;
    for (const char* const key : kTexts)
      sum.characters += std::string(arguments[key].GetString(), arguments[key].GetStringLength()).size();
    for (const char* const key : kNumbers) sum.numbers += arguments[key].GetDouble();
    sum.characters += arguments["symmetric"].GetBool() ? 1 : 0;
  }
  return sum;
}

// In sight of others, so that no compiler leaves a reading out.
volatile std::size_t characters_read = 0;

// Nothing here waits, so that it is processor time where the system tells it finely: what else the machine
// does meanwhile is none of either side's.
template <typename Work>
double ReadingMs(Work work) {
#ifdef _WIN32
  return benchmarks::Milliseconds(work);
#else
  const std::clock_t begin = std::clock();
  work();
  return 1e3 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
#endif
}

template <typename Read>
auto Timed(Read read) {
  return [read] { return ReadingMs([&] { characters_read = read().characters; }); };
}

// False when the two sides do not read the same.
bool Measure(const char* what, const std::string& bytes) {
  const std::wstring text = vek::DecodeUtf8(bytes);
  if (bytes.size() != kBatchBytes || ReadWithOurs(text) != ReadWithRapidJson(bytes)) return false;
  const auto rapidjson = Timed([&] { return ReadWithRapidJson(bytes); });
  const auto scanned = benchmarks::Compare(kTurns, Timed([&] { return ReadWithOurs(text); }), rapidjson);
  const auto decoded =
      benchmarks::Compare(kTurns, Timed([&] { return ReadWithOurs(vek::DecodeUtf8(bytes)); }), rapidjson);
  benchmarks::PrintRow(what, "", scanned->ratio, kBudget);
  benchmarks::PrintRow("- with the decoding of its bytes", "", decoded->ratio);
  return true;
}

}  // namespace

#ifdef _WIN32
#define COMPILER "MinGW-w64"
#else
#define COMPILER "clang"
#endif

int main() {
  if (Measure("scanning a full batch, short arguments, of RapidJSON (" COMPILER ")", Batch(ShortOperation)) &&
      Measure("scanning a full batch, point lists, of RapidJSON (" COMPILER ")", Batch(OperationWithPoints)))
    return 0;
  std::fprintf(stderr, "the two readers disagree\n");
  return 1;
}
