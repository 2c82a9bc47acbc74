// The rules of the house that no compiler keeps, read from the sources themselves.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

// What the core may include in <...>: the standard library, less the headers that exist for clocks,
// threads, locales and formatted streams.
constexpr std::string_view kHeaders =
    " algorithm any array bit bitset cassert cerrno charconv chrono climits cmath compare complex"
    " concepts cstddef cstdint cstdio cstdlib cstring deque exception filesystem forward_list "
    "fstream"
    " functional initializer_list iosfwd istream iterator limits list map memory new numbers"
    " numeric optional ostream queue random ranges ratio set span stack stdexcept string"
    " string_view system_error tuple type_traits typeinfo unordered_map unordered_set utility"
    " valarray variant vector ";

// Clocks, sleeps, and whatever reads the locale, which the toolkit sets for the whole program.
constexpr std::string_view kWords =
    " system_clock steady_clock high_resolution_clock utc_clock file_clock gettimeofday"
    " clock_gettime timespec_get localtime gmtime mktime strftime asctime sleep_for sleep_until"
    " usleep nanosleep this_thread setlocale localeconv locale strtod strtof strtold strtol strtoll"
    " strtoul strtoull atof atoi atol atoll stod stof stold stoi stol stoll stoul stoull printf"
    " fprintf sprintf snprintf vsnprintf vprintf scanf sscanf fscanf stringstream istringstream"
    " ostringstream toupper tolower isalpha isalnum isdigit isspace isupper islower isprint"
    " ispunct ";

// These are words of everyday, and forbidden only where they are called as free functions.
constexpr std::string_view kCalledWords = " time clock sleep ";

bool Lists(std::string_view list, const std::string& word) {
  return list.find(" " + word + " ") != list.npos;
}

// Includes point to a lower rank or stay in their own folder. The first row that fits counts.
using Floor = std::pair<std::string_view, int>;
constexpr Floor kFloors[] = {
    {"platform/", 0},  {"simulator/", 0},         {"values/", 1},
    {"link/", 2},      {"datasheet/records/", 3}, {"controller/records/", 3},
    {"transfers/", 4}, {"datasheet/", 5},         {"controller/", 5},
    {"waveview/", 5},  {"measure/", 5},           {"panel/", 5},
    {"shell/", 6}};

// Of the folders that are read, what is not of the core.
constexpr std::string_view kOutside[] = {"main.cpp", "desktop/", "drivers/", "simulator/program/",
                                         "simulator/shims/"};

constexpr char kCode[] = "$1";
constexpr char kCodeWithoutLiterals[] = " ";

// Replaces each literal, which is $1, and each comment. A mark behind a digit parts thousands.
std::string Strip(const std::string& source, const char* replacement) {
  static const std::regex kLiteralOrComment(
      R"x((R"(\w*)\([\s\S]*?\)\2"|"(?:\\.|[^"\\\n])*"|[0-9]'|'(?:\\.|[^'\\\n])+'))x"
      R"x(|//[^\n]*|/\*[\s\S]*?\*/)x");
  return std::regex_replace(source, kLiteralOrComment, replacement);
}

// Every match in the code, with its groups.
std::vector<std::vector<std::string>> MatchesOf(const std::string& code, const std::regex& regex) {
  std::vector<std::vector<std::string>> matches;
  for (std::sregex_iterator match(code.begin(), code.end(), regex), end; match != end; ++match) {
    matches.emplace_back(match->begin(), match->end());
  }
  return matches;
}

struct Include {
  bool standard;
  std::string name;
};

std::vector<Include> IncludesOf(const std::string& source) {
  static const std::regex kInclude(R"(#[ \t]*include[ \t]*([<"])([^>"\n]*))");
  std::vector<Include> includes;
  for (const auto& match : MatchesOf(Strip(source, kCode), kInclude)) {
    includes.push_back({match[1] == "<", match[2]});
  }
  return includes;
}

std::vector<std::string> ForbiddenWordsIn(const std::string& source) {
  static const std::regex kWord(R"(([.>]?)\b([A-Za-z_]\w*)(\s*\()?)");
  std::vector<std::string> found;
  for (const auto& match : MatchesOf(Strip(source, kCodeWithoutLiterals), kWord)) {
    const bool called = match[1].empty() && !match[3].empty();
    if (Lists(kWords, match[2]) || (called && Lists(kCalledWords, match[2]))) {
      found.push_back(match[2]);
    }
  }
  return found;
}

// What is wrong with an include, or nothing.
std::string FaultOf(const std::string& file, const Include& include) {
  if (include.standard) {
    return Lists(kHeaders, include.name) ? "" : "<" + include.name + "> is not for the core";
  }
  const auto floorOf = [](const std::string& name) {
    return std::find_if(std::begin(kFloors), std::end(kFloors),
                        [&name](const Floor& floor) { return name.starts_with(floor.first); });
  };
  const auto from = floorOf(file);
  const auto to = floorOf(include.name);
  if (from == std::end(kFloors) || to == std::end(kFloors)) return "no floor: " + include.name;
  return to == from || to->second < from->second ? "" : include.name + " is not below";
}

using Sources = std::map<std::string, std::string>;

// Each file of the core and of the instrument's library, by the name under which it is included.
Sources ReadCore() {
  Sources sources;
  const fs::path root = ORIOLEMARK_SOURCE_DIR;
  for (const auto& [folder, base] : {std::pair("src", "src"), std::pair("simulator", ".")}) {
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      const std::string name = entry.path().lexically_relative(root / base).generic_string();
      const bool outside =
          std::any_of(std::begin(kOutside), std::end(kOutside),
                      [&name](std::string_view start) { return name.starts_with(start); });
      if (outside || (!name.ends_with(".h") && !name.ends_with(".cpp"))) continue;
      std::ifstream file(entry.path(), std::ios::binary);
      sources[name] = std::string(std::istreambuf_iterator<char>(file), {});
    }
  }
  return sources;
}

// The files of cycles, and those that include them: takes away whatever includes nothing that is
// left, until nothing can be taken.
std::vector<std::string> FilesInCycles(const Sources& sources) {
  std::map<std::string, std::vector<Include>> left;
  for (const auto& [file, source] : sources) left[file] = IncludesOf(source);
  const auto includesNothingLeft = [&left](const auto& entry) {
    return std::none_of(entry.second.begin(), entry.second.end(),
                        [&left](const Include& include) { return left.contains(include.name); });
  };
  while (std::erase_if(left, includesNothingLeft) > 0) continue;
  std::vector<std::string> files;
  for (const auto& entry : left) files.push_back(entry.first);
  return files;
}

TEST(HouseRulesTest, TheCheckerTellsGoodIncludesFromBad) {
  struct Row {
    const char* file;
    const char* line;
    bool allowed;
  };
  const Row rows[] = {{"link/A.cpp", "#include <string>", true},
                      {"link/A.cpp", "#include <string.h>", false},
                      {"link/A.cpp", "# include <QString>", false},
                      {"link/A.cpp", "// #include <thread>", true},
                      {"link/A.cpp", "/* #include <thread> */", true},
                      {"link/A.cpp", "#include \"link/B.h\"", true},
                      {"link/A.cpp", "#include \"values/B.h\"", true},
                      {"link/A.cpp", "#include \"transfers/B.h\"", false},
                      {"shell/A.cpp", "#include \"desktop/B.h\"", false},
                      {"elsewhere/A.cpp", "#include \"values/B.h\"", false},
                      {"panel/A.cpp", "#include \"measure/B.h\"", false},
                      {"datasheet/records/A.cpp", "#include \"datasheet/B.h\"", false}};
  for (const Row& row : rows) {
    const std::vector<Include> includes = IncludesOf(row.line);
    const bool allowed = includes.empty() || FaultOf(row.file, includes[0]).empty();
    EXPECT_EQ(allowed, row.allowed) << row.file << ": " << row.line;
  }
}

TEST(HouseRulesTest, TheCheckerFindsWordsInCodeOnly) {
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"std::chrono::steady_clock::now();", {"steady_clock"}},
      {"x = std::time (nullptr);", {"time"}},
      {"x = scope.time(); y->time(); int time = 0;", {}},
      {"// strtod\n/* sleep(1)\n printf */", {}},
      {"a = \"printf \\\" strtod\"; b = '\"'; strtod(a);", {"strtod"}},
      {"a = R\"x(\" )\" atoi )x\"; atof(a);", {"atof"}},
      {"int n = 17'000; setlocale(0, \"'\");", {"setlocale"}},
      {"Sleep(4); my_sleep_for(1); printfs();", {}}};
  for (const auto& [code, words] : rows) EXPECT_EQ(ForbiddenWordsIn(code), words) << code;
}

TEST(HouseRulesTest, TheCheckerFindsCycles) {
  Sources sources = {
      {"a.h", "#include \"b.h\"\n#include \"c.h\""}, {"b.h", "#include \"c.h\""}, {"c.h", ""}};
  EXPECT_TRUE(FilesInCycles(sources).empty());
  sources["c.h"] = "#include \"b.h\"";
  EXPECT_EQ(FilesInCycles(sources), (std::vector<std::string>{"a.h", "b.h", "c.h"}));
}

TEST(HouseRulesTest, TheCoreKeepsTheRules) {
  const Sources sources = ReadCore();
  // An empty list would pass every rule.
  ASSERT_TRUE(sources.contains("link/TX5000Cmd.cpp"));
  ASSERT_TRUE(sources.contains("simulator/Instrument.cpp"));
  for (const auto& [file, source] : sources) {
    EXPECT_EQ(ForbiddenWordsIn(source), std::vector<std::string>()) << file;
    for (const Include& include : IncludesOf(source)) {
      EXPECT_EQ(FaultOf(file, include), "") << file;
    }
  }
  EXPECT_EQ(FilesInCycles(sources), std::vector<std::string>());
}

}  // namespace
