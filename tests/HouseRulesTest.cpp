// The rules of the house that no compiler keeps, read from the sources themselves.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <ranges>

#include "support/Tables.h"

namespace {

namespace fs = std::filesystem;

// What the core may include in <...>: the standard library as far as it has a use for it, and never
// the headers that exist for clocks, threads, locales and formatted streams.
constexpr std::string_view kHeaders =
    " algorithm array bit cerrno charconv chrono climits cmath cstddef cstdint cstdio cstdlib "
    "cstring deque filesystem functional initializer_list iterator limits map memory numbers "
    "optional queue random ranges set span stdexcept string string_view system_error tuple "
    "type_traits unordered_map utility variant vector ";

// Clocks, sleeps, and whatever reads the locale, which the toolkit sets for the whole program.
// Everyday words are forbidden only where they are called as free functions.
constexpr std::string_view kWords =
    " system_clock steady_clock high_resolution_clock utc_clock file_clock gettimeofday "
    "clock_gettime timespec_get localtime gmtime mktime strftime asctime sleep_for sleep_until "
    "usleep nanosleep this_thread setlocale localeconv locale strtod strtof strtold strtol strtoll "
    "strtoul strtoull atof atoi atol atoll stod stof stold stoi stol stoll stoul stoull printf "
    "fprintf sprintf snprintf vsnprintf vprintf scanf sscanf fscanf stringstream istringstream "
    "ostringstream toupper tolower isalpha isalnum isdigit isspace isupper islower isprint ispunct "
    "time( clock( sleep( ";

bool Lists(std::string_view list, const std::string& word) {
  return list.find(" " + word + " ") != list.npos;
}

// Includes point to a lower rank or stay in their own folder. The first row that fits counts.
const auto kFloors = oriolemark::Rows(R"(
0 | platform/ || 0 | simulator/ || 1 | values/ || 1 | documents/ || 2 | link/
3 | datasheet/records/ || 3 | controller/records/ || 4 | transfers/ || 4 | output/ || 5 | datasheet/
5 | controller/ || 5 | waveview/ || 5 | measure/ || 5 | panel/ || 6 | shell/
)");

// Of the folders that are read, the sources of the core.
const std::regex kCore(R"((?!main\.cpp|desktop/|drivers/|simulator/(program|shims)/).*\.(h|cpp))");

// Replaces each literal, which is "$1", and each comment. A mark behind a digit parts thousands.
std::string Strip(const std::string& source, const char* replacement) {
  static const std::regex kLiteralOrComment(
      R"x((R"(\w*)\([\s\S]*?\)\2"|"(?:\\.|[^"\\\n])*"|[0-9]'|'(?:\\.|[^'\\\n])+'))x"
      R"x(|//[^\n]*|/\*[\s\S]*?\*/)x");
  return std::regex_replace(source, kLiteralOrComment, replacement);
}

// What is included, standard headers with their "<" in front.
std::vector<std::string> IncludesOf(const std::string& source) {
  static const std::regex kInclude(R"(#[ \t]*include[ \t]*"?(<?[^>"\n]*))");
  const std::string code = Strip(source, "$1");
  return {std::sregex_token_iterator(code.begin(), code.end(), kInclude, 1), {}};
}

// The first of the words above that the code uses, or nothing.
std::string ForbiddenWordIn(const std::string& source) {
  static const std::regex kWord(R"(([.>]?)\b([A-Za-z_]\w*)(?:\s*(\())?)");
  const std::string code = Strip(source, " ");
  for (std::sregex_iterator match(code.begin(), code.end(), kWord), end; match != end; ++match) {
    const std::string word = match->str(2);
    const std::string call = match->str(1) + word + match->str(3);
    if (Lists(kWords, word) || Lists(kWords, call)) return word;
  }
  return "";
}

// What is wrong with an include, or nothing.
std::string FaultOf(const std::string& file, const std::string& include) {
  if (include.starts_with('<')) {
    return Lists(kHeaders, include.substr(1)) ? "" : include + "> is not for the core";
  }
  const auto floorOf = [](const std::string& name) {
    return std::ranges::find_if(kFloors, [&name](auto& row) { return name.starts_with(row[1]); });
  };
  const auto from = floorOf(file);
  const auto to = floorOf(include);
  if (from == kFloors.end() || to == kFloors.end()) return "no floor: " + include;
  return to == from || to->front() < from->front() ? "" : include + " is not below";
}

using Includes = std::map<std::string, std::vector<std::string>>;

// The files of cycles, and those that include them: takes away whatever includes nothing that is
// left, until nothing can be taken.
std::vector<std::string> FilesInCycles(Includes left) {
  const auto includesNothingLeft = [&left](const auto& entry) {
    return std::ranges::none_of(entry.second,
                                [&left](const auto& include) { return left.contains(include); });
  };
  while (std::erase_if(left, includesNothingLeft) > 0) continue;
  const auto files = std::views::keys(left);
  return {files.begin(), files.end()};
}

TEST(HouseRulesTest, TheCheckerFindsIncludesThatPointUpOrInACircleAndWordsInCodeOnly) {
  for (const auto& row : oriolemark::Rows(R"(
link/A.cpp | #include <string> | good || link/A.cpp | #include <string.h> | bad
link/A.cpp | # include <QString> | bad || link/A.cpp | // #include <thread> | good
link/A.cpp | #include "values/B.h" | good || link/A.cpp | #include "transfers/B.h" | bad
panel/A.cpp | #include "measure/B.h" | bad || elsewhere/A.cpp | #include "values/B.h" | bad
)")) {
    const std::vector<std::string> includes = IncludesOf(row[1]);
    const bool good = includes.empty() || FaultOf(row[0], includes[0]).empty();
    EXPECT_EQ(good ? "good" : "bad", row[2]) << row[0] << ": " << row[1];
  }
  for (const auto& row : oriolemark::Rows(R"rows(
std::chrono::steady_clock::now(); | steady_clock || x = std::time (nullptr); | time
x = scope.time(); y->time(); int time = 0; | - || Sleep(4); printfs(); /* atof */ // printf | -
a = "printf \" strtod"; b = '"'; strtod(a); | strtod || a = R"x(" )" atoi )x"; atof(a); | atof
int n = 17'000; setlocale(0, "'"); | setlocale
)rows")) {
    EXPECT_EQ(ForbiddenWordIn(row[0]), row[1]) << row[0];
  }
  Includes includes = {{"a.h", {"b.h", "c.h"}}, {"b.h", {"c.h"}}, {"c.h", {}}};
  EXPECT_TRUE(FilesInCycles(includes).empty());
  includes["c.h"] = {"b.h"};
  EXPECT_EQ(FilesInCycles(includes), (std::vector<std::string>{"a.h", "b.h", "c.h"}));
}

// Each file of the core and of the instrument's library, by the name under which it is included.
TEST(HouseRulesTest, TheCoreKeepsTheRules) {
  Includes includes;
  const fs::path root = ORIOLEMARK_SOURCE_DIR;
  for (const auto& [folder, base] : {std::pair("src", "src"), std::pair("simulator", ".")}) {
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      const std::string name = entry.path().lexically_relative(root / base).generic_string();
      if (!std::regex_match(name, kCore)) continue;
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string source(std::istreambuf_iterator<char>(file), {});
      EXPECT_EQ(ForbiddenWordIn(source), "") << name;
      includes[name] = IncludesOf(source);
      for (const auto& include : includes[name]) EXPECT_EQ(FaultOf(name, include), "") << name;
    }
  }
  // An empty list would pass every rule.
  EXPECT_TRUE(includes.contains("link/TX5000Cmd.cpp"));
  EXPECT_TRUE(includes.contains("simulator/Instrument.cpp"));
  EXPECT_EQ(FilesInCycles(includes), std::vector<std::string>());
}

}  // namespace
