// The rules of the house that no compiler keeps, read from the sources themselves.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

// What the core may include in <...>: the standard library, less the headers that exist for clocks,
// threads, locales and formatted streams.
constexpr std::string_view kHeaders[] = {
    "algorithm",  "any",           "array",         "bit",        "bitset",
    "cassert",    "charconv",      "chrono",        "climits",    "cmath",
    "compare",    "complex",       "concepts",      "cstddef",    "cstdint",
    "cstdio",     "cstdlib",       "cstring",       "deque",      "exception",
    "filesystem", "forward_list",  "fstream",       "functional", "initializer_list",
    "iosfwd",     "istream",       "iterator",      "limits",     "list",
    "map",        "memory",        "new",           "numbers",    "numeric",
    "optional",   "ostream",       "queue",         "random",     "ranges",
    "ratio",      "set",           "span",          "stack",      "stdexcept",
    "string",     "string_view",   "system_error",  "tuple",      "type_traits",
    "typeinfo",   "unordered_map", "unordered_set", "utility",    "valarray",
    "variant",    "vector"};

struct Floor {
  std::string_view folder;
  int rank;
};

// Includes point to a lower rank or stay in their own folder. The first row that fits counts.
constexpr Floor kFloors[] = {
    {"platform/", 0},  {"simulator/", 0},         {"values/", 1},
    {"link/", 2},      {"datasheet/records/", 3}, {"controller/records/", 3},
    {"transfers/", 4}, {"datasheet/", 5},         {"controller/", 5},
    {"waveview/", 5},  {"measure/", 5},           {"panel/", 5},
    {"shell/", 6}};

// Clocks, sleeps, and whatever reads the locale, which the toolkit sets for the whole program.
constexpr std::string_view kWords[] = {"system_clock",  "steady_clock", "high_resolution_clock",
                                       "utc_clock",     "file_clock",   "gettimeofday",
                                       "clock_gettime", "timespec_get", "localtime",
                                       "gmtime",        "mktime",       "strftime",
                                       "asctime",       "sleep_for",    "sleep_until",
                                       "usleep",        "nanosleep",    "this_thread",
                                       "setlocale",     "localeconv",   "locale",
                                       "strtod",        "strtof",       "strtold",
                                       "strtol",        "strtoll",      "strtoul",
                                       "strtoull",      "atof",         "atoi",
                                       "atol",          "atoll",        "stod",
                                       "stof",          "stold",        "stoi",
                                       "stol",          "stoll",        "stoul",
                                       "stoull",        "printf",       "fprintf",
                                       "sprintf",       "snprintf",     "vsnprintf",
                                       "vprintf",       "scanf",        "sscanf",
                                       "fscanf",        "stringstream", "istringstream",
                                       "ostringstream", "toupper",      "tolower",
                                       "isalpha",       "isalnum",      "isdigit",
                                       "isspace",       "isupper",      "islower",
                                       "isprint",       "ispunct"};

// These are words of everyday, and forbidden only where they are called as free functions.
constexpr std::string_view kCalledWords[] = {"time", "clock", "sleep"};

template <typename Table>
bool Holds(const Table& table, std::string_view word) {
  return std::find(std::begin(table), std::end(table), word) != std::end(table);
}

bool IsWordCharacter(char c) {
  return c == '_' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

enum class Literals { kKept, kEmptied };

// Where the text or character literal that begins at `at` ends, behind its closing mark.
std::size_t EndOfLiteral(std::string_view code, std::size_t at) {
  if (code[at] == '"' && at > 0 && code[at - 1] == 'R') {
    const std::size_t open = std::min(code.find('(', at), code.size());
    std::string close = ")";
    close.append(code.substr(at + 1, open - at - 1)).append("\"");
    const std::size_t end = code.find(close, open);
    return end == code.npos ? code.size() : end + close.size();
  }
  const char mark = code[at++];
  while (at < code.size() && code[at] != mark && code[at] != '\n') at += code[at] == '\\' ? 2 : 1;
  return std::min(at + 1, code.size());
}

std::size_t EndOfComment(std::string_view code, std::size_t at) {
  const bool line = code[at + 1] == '/';
  const std::size_t end = code.find(line ? "\n" : "*/", at + 2);
  if (end == code.npos) return code.size();
  return line ? end : end + 2;
}

// The code without its comments, and without the insides of its literals where these do not count.
std::string Strip(std::string_view code, Literals literals) {
  std::string stripped;
  for (std::size_t at = 0; at < code.size();) {
    const bool comment = code.substr(at, 2) == "//" || code.substr(at, 2) == "/*";
    // A mark between digits parts thousands.
    const bool digitMark = code[at] == '\'' && at > 0 && IsWordCharacter(code[at - 1]);
    if (comment) {
      at = EndOfComment(code, at);
      stripped += ' ';
    } else if (code[at] == '"' || (code[at] == '\'' && !digitMark)) {
      const std::size_t end = EndOfLiteral(code, at);
      stripped += literals == Literals::kKept ? code.substr(at, end - at) : "\"\"";
      at = end;
    } else {
      stripped += code[at++];
    }
  }
  return stripped;
}

struct Include {
  bool standard;
  std::string name;
};

std::vector<Include> IncludesOf(std::string_view source) {
  std::vector<Include> includes;
  const std::string code = Strip(source, Literals::kKept);
  constexpr std::string_view kWord = "include";
  for (auto hash = code.find('#'); hash != code.npos; hash = code.find('#', hash + 1)) {
    const auto word = code.find_first_not_of(" \t", hash + 1);
    if (word == code.npos || code.compare(word, kWord.size(), kWord) != 0) continue;
    const auto open = code.find_first_of("<\"\n", word);
    if (open == code.npos || code[open] == '\n') continue;
    const auto close = std::min(code.find_first_of(">\"\n", open + 1), code.size());
    includes.push_back({code[open] == '<', code.substr(open + 1, close - open - 1)});
  }
  return includes;
}

std::optional<Floor> FloorOf(std::string_view file) {
  for (const Floor& floor : kFloors) {
    if (file.starts_with(floor.folder)) return floor;
  }
  return std::nullopt;
}

// What is wrong with an include, or nothing.
std::string FaultOf(const std::string& file, const Include& include) {
  if (include.standard) {
    return Holds(kHeaders, include.name) ? "" : "<" + include.name + "> is not for the core";
  }
  const auto from = FloorOf(file);
  const auto to = FloorOf(include.name);
  if (!from) return "stands on no floor of the core";
  if (!to) return include.name + " stands on no floor of the core";
  const bool allowed = to->rank < from->rank || to->folder == from->folder;
  return allowed ? "" : include.name + " is not below";
}

std::vector<std::string> ForbiddenWordsIn(std::string_view source) {
  std::vector<std::string> found;
  const std::string code = Strip(source, Literals::kEmptied);
  for (std::size_t at = 0; at < code.size();) {
    std::size_t end = at;
    while (end < code.size() && IsWordCharacter(code[end])) ++end;
    const std::string word = code.substr(at, end - at);
    const auto next = code.find_first_not_of(" \n", end);
    const bool called = next != code.npos && code[next] == '(';
    const bool member = at > 0 && (code[at - 1] == '.' || code[at - 1] == '>');
    if (Holds(kWords, word) || (called && !member && Holds(kCalledWords, word))) {
      found.push_back(word);
    }
    at = std::max(end, at + 1);
  }
  return found;
}

using Sources = std::map<std::string, std::string>;

bool IsSource(const fs::path& path) {
  return path.extension() == ".h" || path.extension() == ".cpp";
}

void Add(Sources& sources, const fs::path& path, const fs::path& root) {
  std::ifstream file(path, std::ios::binary);
  sources[path.lexically_relative(root).generic_string()] =
      std::string(std::istreambuf_iterator<char>(file), {});
}

// Each file of the core and of the instrument's library, by the name under which it is included.
const Sources& CoreSources() {
  static const Sources kSources = [] {
    Sources sources;
    const fs::path root = ORIOLEMARK_SOURCE_DIR;
    for (const auto& entry : fs::recursive_directory_iterator(root / "src")) {
      const std::string name = entry.path().lexically_relative(root / "src").generic_string();
      const bool core =
          name != "main.cpp" && !name.starts_with("desktop/") && !name.starts_with("drivers/");
      if (core && IsSource(entry.path())) Add(sources, entry.path(), root / "src");
    }
    for (const auto& entry : fs::directory_iterator(root / "simulator")) {
      if (IsSource(entry.path())) Add(sources, entry.path(), root);
    }
    return sources;
  }();
  return kSources;
}

// The first cycle that is met from `file` on, as a list of names; empty without one.
std::string CycleFrom(const Sources& sources, const std::string& file,
                      std::vector<std::string>& trail, std::set<std::string>& done) {
  const auto seen = std::find(trail.begin(), trail.end(), file);
  if (seen != trail.end()) {
    std::string cycle;
    for (auto name = seen; name != trail.end(); ++name) cycle += *name + " > ";
    return cycle + file;
  }
  const auto source = sources.find(file);
  if (source == sources.end() || !done.insert(file).second) return "";
  trail.push_back(file);
  for (const Include& include : IncludesOf(source->second)) {
    std::string cycle = include.standard ? "" : CycleFrom(sources, include.name, trail, done);
    if (!cycle.empty()) return cycle;
  }
  trail.pop_back();
  return "";
}

std::string FirstCycle(const Sources& sources) {
  std::set<std::string> done;
  for (const auto& [file, source] : sources) {
    std::vector<std::string> trail;
    std::string cycle = CycleFrom(sources, file, trail, done);
    if (!cycle.empty()) return cycle;
  }
  return "";
}

TEST(HouseRulesTest, TheCheckerTellsGoodFromBad) {
  struct Row {
    const char* file;
    const char* line;
    bool allowed;
  };
  const Row rows[] = {{"link/A.cpp", "#include <string>", true},
                      {"link/A.cpp", "#include <string.h>", false},
                      {"link/A.cpp", "# include <QString>", false},
                      {"link/A.cpp", "#include <thread>", false},
                      {"link/A.cpp", "// #include <thread>", true},
                      {"link/A.cpp", "/* #include <thread> */", true},
                      {"link/A.cpp", "#include \"link/B.h\"", true},
                      {"link/A.cpp", "#include \"values/B.h\"", true},
                      {"link/A.cpp", "#include \"transfers/B.h\"", false},
                      {"link/A.cpp", "#include \"B.h\"", false},
                      {"shell/A.cpp", "#include \"desktop/B.h\"", false},
                      {"elsewhere/A.cpp", "#include \"values/B.h\"", false},
                      {"panel/A.cpp", "#include \"measure/B.h\"", false},
                      {"datasheet/A.cpp", "#include \"datasheet/records/B.h\"", true},
                      {"datasheet/records/A.cpp", "#include \"datasheet/B.h\"", false},
                      {"datasheet/records/A.cpp", "#include \"controller/records/B.h\"", false}};
  for (const Row& row : rows) {
    bool allowed = true;
    for (const Include& include : IncludesOf(row.line)) {
      allowed = allowed && FaultOf(row.file, include).empty();
    }
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
  const Sources round = {
      {"a.h", "#include \"b.h\""}, {"b.h", "#include \"c.h\""}, {"c.h", "#include \"b.h\""}};
  const Sources diamond = {
      {"a.h", "#include \"b.h\"\n#include \"c.h\""}, {"b.h", "#include \"c.h\""}, {"c.h", ""}};
  EXPECT_EQ(FirstCycle(round), "b.h > c.h > b.h");
  EXPECT_EQ(FirstCycle(diamond), "");
}

TEST(HouseRulesTest, CoreIncludesPointDownAndNameTheStandardLibraryOnly) {
  // An empty list would pass every rule.
  ASSERT_TRUE(CoreSources().contains("link/TX5000Cmd.cpp"));
  ASSERT_TRUE(CoreSources().contains("simulator/Instrument.cpp"));
  for (const auto& [file, source] : CoreSources()) {
    for (const Include& include : IncludesOf(source)) {
      EXPECT_EQ(FaultOf(file, include), "") << file;
    }
  }
}

TEST(HouseRulesTest, CoreIncludesFormNoCycle) {
  EXPECT_EQ(FirstCycle(CoreSources()), "");
}

TEST(HouseRulesTest, CoreKnowsNoClockNoSleepAndNoLocale) {
  for (const auto& [file, source] : CoreSources()) {
    EXPECT_EQ(ForbiddenWordsIn(source), std::vector<std::string>()) << file;
  }
}

}  // namespace
