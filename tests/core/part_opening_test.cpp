// Requests to open a part: what is read of them, what is answered, and what is handed on.
#include "addin/server/part_opening.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>

#include "tests/core/running_server.h"

namespace vek {
namespace {

using support::ParseAnswer;
using support::RequestText;

const ServerLog kNoLog = [](std::wstring_view) {};

TEST(FlatFields, TakeTheFirstTextualHitWhateverItsNesting) {
  const struct {
    const wchar_t *text, *value;
  } cases[] = {
      {LR"({"b":{"a": "deep"},"a":"later"})", L"deep"},
      {LR"({"a" : "blank before the colon"})", L"blank before the colon"},
      {LR"({"a" :"only if there is no other","a":"this"})", L"this"},
      {LR"({"a":"say \"so\"","b":1})", LR"(say \"so\")"},
      {LR"({"a":"unclosed)", L"unclosed"},
      {LR"({"a":"ends in \)", LR"(ends in \)"},
      {L"{\"a\":\t 12.5 \r\n}", L"12.5"},
      {LR"({"a":{"x":1,"y":2}})", LR"({"x":1)"},
      {LR"({"a":   )", L""},
      {LR"({"a"  :"two blanks"})", L""},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(ReadFlatField(text, L"a"), value) << text;
  EXPECT_EQ(ReadFlatField(LR"({"a":"","Second":"2"})", L"a", L"Second"), L"2");
}

TEST(PartOpening, ReadsWhatIsThereAndKeepsTheDefaultsOfTheRest) {
  FileDownloadInfo info;
  ASSERT_TRUE(ParseFileDownloadInfo(
      LR"({"DownloadPath":"a.prt","PlaceLikeComponentTitle":"BOLT","placeLikeFilePath":"b.prt","replaceExisting": "TRUE"})",
      info, kNoLog));
  EXPECT_EQ(info.downloadPath, L"a.prt");
  EXPECT_EQ(info.placeLikeComponentTitle, L"BOLT");
  EXPECT_EQ(info.placeLikeFilePath, L"b.prt");
  EXPECT_TRUE(info.replaceExisting);

  for (const wchar_t* body : {LR"({"replaceExisting":1})", LR"({"replaceExisting": true})"}) {
    FileDownloadInfo other;
    ASSERT_TRUE(ParseFileDownloadInfo(body, other, kNoLog));
    EXPECT_TRUE(other.replaceExisting) << body;
  }
  FileDownloadInfo plain;
  ASSERT_TRUE(ParseFileDownloadInfo(LR"({"filePath":"c.asm","replaceExisting":"yes"})", plain, kNoLog));
  EXPECT_EQ(plain.downloadPath, L"c.asm");
  EXPECT_FALSE(plain.replaceExisting);
}

TEST(PartOpening, CutsANestedPlaceAtItsFirstFieldAndNeverReadsAMatrix) {
  FileDownloadInfo info;
  ASSERT_TRUE(ParseFileDownloadInfo(LR"({"locationInfo":{"loc":{"x":1,"y":2,"z":3}}})", info, kNoLog));
  EXPECT_EQ(info.location.x, 0);
  ASSERT_TRUE(ParseFileDownloadInfo(LR"({"locationInfo":{"orientation":[[0,1,0]]}})", info, kNoLog));
  EXPECT_EQ(info.location.orientation, LocationInfo{}.orientation);
}

class PartOpeningRoute : public testing::Test {
 protected:
  PartOpeningRoute() {
    running_.server.SetFileProcessingCallback([this](const FileDownloadInfo& info) {
      if (info.fileName == L"throw.prt") throw std::runtime_error("no room");
      taken_ = info;
    });
    running_.Start();
    std::ofstream(file_) << "a part";
  }
  ~PartOpeningRoute() override { std::filesystem::remove(file_); }

  std::string PostBody(const std::string& body) { return running_.Exchange(RequestText("POST", "/", body)); }

  support::RunningServer running_;
  std::optional<FileDownloadInfo> taken_;
  const std::string file_ = std::filesystem::temp_directory_path() / "vek_part_opening_test.prt";
};

TEST_F(PartOpeningRoute, AnswersByWhatTheRequestNames) {
  const std::string taken = "<html><body><h1>Data Received</h1></body></html>";
  const auto error = [](const std::string& text) {
    return "<html><body><h1>Error</h1><p>" + text + "</p></body></html>";
  };
  const struct {
    std::string body;
    int status;
    std::string answer;
  } cases[] = {
      {"", 400, error("Request body is empty")},
      {"  ", 400, error("Download path is missing")},
      {"no json at all", 400, error("Download path is missing")},
      {R"({"DOWNLOADPATH":"x.prt"})", 400, error("Download path is missing")},
      {R"({"downloadPath":")" + file_ + R"("})", 200, taken},
      {R"({"downloadPath":"C:\\x\\missing.prt"})", 404, error(R"(File not found: C:\\x\\missing.prt)")},
      {R"({"downloadPath":"\\\\server\\missing.prt"})", 404,
       error(R"(File not found: \\\\server\\missing.prt)")},
      {R"({"downloadPath":"store/A-123.prt"})", 200, taken},
      {R"({"downloadPath":"store/"})", 404, error("File not found: store/")},
      {R"({"downloadPath":"throw.prt"})", 500, error("Internal server error during file processing")},
  };
  for (const auto& [body, status, answer] : cases) {
    const std::string got = PostBody(body);
    EXPECT_EQ(ParseAnswer(got).status, status) << body;
    EXPECT_EQ(ParseAnswer(got).body, answer) << body;
    EXPECT_NE(got.find("Content-Type: text/html\r\n"), std::string::npos) << body;
  }
}

TEST_F(PartOpeningRoute, TakesANameThatIsNoFileHereForOneOfTheWorkspace) {
  PostBody(R"({"downloadPath":"store\\A-123.prt","placeLikeComponentTitle":"BOLT"})");
  ASSERT_TRUE(taken_);
  EXPECT_EQ(taken_->fileName, L"A-123.prt");
  EXPECT_EQ(taken_->downloadPath, L"");
  EXPECT_EQ(taken_->placeLikeComponentTitle, L"BOLT");
}

}  // namespace
}  // namespace vek
