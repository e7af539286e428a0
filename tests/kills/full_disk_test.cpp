// What is to be written meets a disk without room for it: a message, no half of a file, nothing lost that was
// there before, and a session that goes on.

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <set>

#include "bench/kernel/base64.h"
#include "tests/endtoend/companion_ground.h"
#include "tests/kills/small_disk_map.h"

namespace vek::endtoend {
namespace {

namespace fs = std::filesystem;
using kills::kEndless;
using kills::SmallDiskMap;

// Folders that behave as disks with little room, for a bench that is started with them.
class SmallDisks {
 public:
  SmallDisks() {
    const int file = open(file_.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || ftruncate(file, sizeof(SmallDiskMap)) != 0) throw std::runtime_error("no map of disks");
    void* const map = mmap(nullptr, sizeof(SmallDiskMap), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    close(file);
    if (map == MAP_FAILED) throw std::runtime_error("no map of disks");
    map_ = static_cast<SmallDiskMap*>(map);
  }
  ~SmallDisks() {
    munmap(map_, sizeof(SmallDiskMap));
    fs::remove(file_);
  }
  SmallDisks(const SmallDisks&) = delete;
  SmallDisks& operator=(const SmallDisks&) = delete;

  // What a program's environment must hold for its disks to be these.
  std::map<std::string, std::string> Environment() const {
    return {{"LD_PRELOAD", VEK_SMALL_DISK_LIBRARY}, {kills::kMapVariable, file_.string()}};
  }

  // How many bytes can still be written to files below that folder, from now on; kEndless lifts the limit.
  void SetRoom(const fs::path& folder, std::int64_t bytes) {
    const std::string path = fs::weakly_canonical(folder).string() + "/";
    for (SmallDiskMap::Disk& disk : map_->disks) {
      if (disk.folder[0] != '\0' && path != disk.folder) continue;
      disk.room = bytes;
      if (disk.folder[0] == '\0') path.copy(disk.folder, sizeof disk.folder - 1);
      return;
    }
    throw std::logic_error("too many disks");
  }

 private:
  const fs::path file_ = fs::temp_directory_path() / ("vek_small_disks_" + std::to_string(getpid()));
  SmallDiskMap* map_ = nullptr;
};

// Every file below a folder, with its bytes.
using Files = std::map<std::string, std::string>;

Files FilesBelow(const fs::path& folder) {
  Files files;
  if (!fs::exists(folder)) return files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files[entry.path().string()] = BytesOf(entry.path());
  return files;
}

using Names = std::set<std::string>;

// What the add-in may have made in a folder for temporary files.
Names OursIn(const fs::path& folder) {
  Names names;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.path().filename().string().starts_with("vek") && entry.path().has_extension())
      names.insert(entry.path().filename().string());
  return names;
}

// What is asked of the bench: operations, or a line of its console. `@` stands for the folder to write to,
// `%` for a name.
struct Writing {
  const char *what, *request;
  const char* refusal;  // a part of the answer without room
};

void Replace(std::string& text, char mark, const std::string& with) {
  for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + with.size()))
    text.replace(at, 1, with);
}

class FullDisk : public BenchTest {
 protected:
  static void SetUpTestSuite() {
    fs::remove_all(Target());
    fs::create_directories(Target());
    fs::remove_all(Macros());
    disks_ = std::make_unique<SmallDisks>();
    RemoveLog();
    // The add-in begins without room for its log.
    disks_->SetRoom(DriveD(), 0);
    StartBench(disks_->Environment());
    disks_->SetRoom(DriveD(), kEndless);
  }
  static void TearDownTestSuite() {
    BenchTest::TearDownTestSuite();
    disks_.reset();
    fs::remove_all(Target());
    fs::remove_all(Macros());
  }

  static fs::path Target() { return fs::path(BenchHome()) / "full_disk"; }
  static fs::path DriveD() { return fs::path(BenchHome()) / "drive_d"; }
  static fs::path OfUser(const char* folder) {
    for (const auto& user : fs::directory_iterator(fs::path(BenchHome()) / "prefix/drive_c/users"))
      if (user.path().filename() != "Public") return user.path() / folder;
    throw std::runtime_error("the prefix has no user");
  }
  static fs::path Macros() { return OfUser("AppData/Local/VekAI/Creo/Macros"); }

  static std::string Ask(std::string request, const std::string& name) {
    Replace(request, '@', "Z:" + Target().string());
    Replace(request, '%', name);
    if (request.front() == '{') return Execute(request).body;
    try {
      Bench().Console(request);
      return "\"success\":true";
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  }
  // A new part with a block of 40 x 20 x 10 mm, saved under that name.
  static void MakeBlock(const std::string& name) {
    Succeed(BlockOf(40, 20, 10, name));
    ExpectHolds(Ask(R"({"api_document_save_as":{"file_path":"@/%.prt"}})", name), "\"success\":true");
  }

  // With ever more room, up to one byte less than it takes.
  static void ExpectRefusals(const Writing& writing, const fs::path& folder) {
    SCOPED_TRACE(writing.what);
    const Files before = FilesBelow(folder);
    ExpectHolds(Ask(writing.request, "sound"), "\"success\":true");
    std::uintmax_t size = 0;
    for (const auto& [file, bytes] : FilesBelow(folder))
      if (!before.contains(file) || before.at(file) != bytes) size = bytes.size();
    ASSERT_GT(size, 2u) << "nothing was written there";
    const Files sound = FilesBelow(folder);
    for (const std::uintmax_t room : {std::uintmax_t{0}, size / 2, size - 1}) {
      disks_->SetRoom(folder, static_cast<std::int64_t>(room));
      ExpectHolds(Ask(writing.request, "again"), writing.refusal);
      disks_->SetRoom(folder, kEndless);
      EXPECT_EQ(FilesBelow(folder), sound) << "with room for " << room << " of " << size;
    }
    ExpectHolds(Ask(writing.request, "again"), "\"success\":true");
  }

  static std::unique_ptr<SmallDisks> disks_;
};
std::unique_ptr<SmallDisks> FullDisk::disks_;

TEST_F(FullDisk, TheAddinStartsWithoutRoomForItsLogAndLosesLinesOnly) {
  EXPECT_EQ(LogText(), "");
  EXPECT_EQ(Request("GET", "/health").status, 200);
  const std::string before = LogText();
  EXPECT_NE(before, "") << "there is room again";
  disks_->SetRoom(DriveD(), 10);
  ExpectHolds(Execute(R"({"api_document_list_open":{}})").body, "\"success\":true");
  EXPECT_EQ(LogText().size(), before.size() + 10);
  disks_->SetRoom(DriveD(), kEndless);
  ExpectHolds(Execute(R"({"api_document_list_open":{}})").body, "\"success\":true");
  EXPECT_EQ(LogText().substr(0, before.size()), before);
  ExpectHolds(LogText().substr(before.size() + 10), "\n");
}

TEST_F(FullDisk, WhatIsWrittenIsThereWholeOrNotAtAll) {
  MakeBlock("block");
  const Writing writings[] = {
      {"save as", R"({"api_document_save_as":{"file_path":"@/%.prt"}})", "(status=-17)."},
      {"next version", R"({"api_document_save_as":{"file_path":"@/block.prt"}})", "SaveAs failed for 'Z:"},
      {"STEP", R"({"api_export_file":{"output_path":"@/%","format":"STEP"}})",
       "Failed to export active model as STEP (status=-17)."},
      {"PNG", R"({"api_export_screenshot":{"output_path":"@/%.png","width_px":64,"height_px":48}})",
       "Screenshot was captured, but PNG conversion failed."},
  };
  for (const Writing& writing : writings) ExpectRefusals(writing, Target());
  ExpectRefusals({"macro", R"({"api_macro_create":{"name":"full","code":"models;tree %","overwrite":true}})",
                  "Failed to write macro file 'C:"},
                 Macros());
}

TEST_F(FullDisk, APlotWithoutRoomLeavesTheOlderOne) {
  MakeBlock("drawn");
  Succeed(R"({"api_drawing_create":{},"api_drawing_add_base_view":{"x_mm":100,"y_mm":100}})");
  ExpectRefusals({"plot", "plot @/%.svg", "FILE can't be written"}, Target());
  ExpectRefusals({"plot again", "plot @/same.svg", "FILE can't be written"}, Target());
}

TEST_F(FullDisk, TemporaryFilesWithoutRoomAreToldAndTakenAway) {
  MakeBlock("seen");
  const fs::path temporary = OfUser("Temp");
  const std::string step =
      R"({"api_import_step_base64":{"filename":"block.stp","data_base64":")" +
      bench::kernel::Base64(BytesOf(fs::path(VEK_SOURCE_DIR) / "tests/data/inch_block.stp")) + "\"}}";
  const auto models = Bench().Console("models");
  const Names names = OursIn(temporary);
  for (const int room : {0, 1000}) {
    disks_->SetRoom(temporary, room);
    ExpectHolds(Ask(step, ""), "Failed to write temporary STEP file.");
    ExpectHolds(
        Ask(R"({"api_export_screenshot":{"output_path":"@/%.png","width_px":64,"height_px":48}})", "seen"),
        "Failed to export screenshot (status=-17).");
    disks_->SetRoom(temporary, kEndless);
  }
  EXPECT_FALSE(fs::exists(Target() / "seen.png"));
  // Behind the complaints.
  const auto now = Bench().Console("models");
  ASSERT_GE(now.size(), models.size());
  EXPECT_TRUE(std::equal(models.rbegin(), models.rend(), now.rbegin()));
  // Other programs have theirs there, for a moment.
  EXPECT_TRUE(ComesTrue([&] { return std::ranges::includes(names, OursIn(temporary)); }));
  Succeed(step);
}

}  // namespace
}  // namespace vek::endtoend
