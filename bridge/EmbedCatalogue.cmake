# Runs inside the build: makes a source of the catalogue, whose bytes it holds as they are.
#   cmake -Dcatalogue=FILE -Dsource=FILE -P EmbedCatalogue.cmake
# Numbers instead of a text, because compilers limit how long a literal may be.
file(READ "${catalogue}" bytes HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
string(REGEX REPLACE "((0x..,)(0x..,)(0x..,)(0x..,)(0x..,)(0x..,)(0x..,)(0x..,))" "\\1\n" bytes "${bytes}")
file(WRITE "${source}" "#include \"bridge/catalogue_text.h\"

namespace vek::bridge {
namespace {

constexpr unsigned char kBytes[] = {
${bytes}};

}  // namespace

std::string_view CatalogueText() {
  return {reinterpret_cast<const char*>(kBytes), sizeof kBytes};
}

}  // namespace vek::bridge
")
