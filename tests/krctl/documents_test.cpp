// The documents keep their word: functions and commands, manual page, completion, schema.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "tests/krctl/bench.h"
#include "tests/krctl/json_check.h"

namespace {

TEST(Documents, TheTableLeadsFromEachFunctionToACommand)
{
    std::set<std::string> documented;
    std::set<std::string> commands;
    std::ifstream document(SOURCE_DIR "/docs/krctl.md");
    const std::regex row(R"(^\| `(KR_\w+)` \| (.*) \|$)");
    for (std::string line; std::getline(document, line);) {
        std::smatch parts;
        if (!std::regex_match(line, parts, row)) continue;
        EXPECT_TRUE(documented.insert(parts[1]).second) << line;
        const std::string list = parts[2];
        const std::regex quoted("`([^`]+)`");
        std::sregex_iterator command(list.begin(), list.end(), quoted);
        EXPECT_NE(command, std::sregex_iterator()) << line;
        for (; command != std::sregex_iterator(); ++command)
            commands.insert((*command)[1]);
    }
    std::set<std::string> exported;
    std::ifstream exports(SOURCE_DIR "/mainControl/exports.txt");
    for (std::string name; std::getline(exports, name);)
        if (name.starts_with("KR_")) exported.insert(name);
    EXPECT_EQ(documented, exported);

    for (const std::string &command : commands) {
        std::vector<std::string> words;
        std::istringstream stream(command);
        for (std::string word; stream >> word;)
            words.push_back(word);
        words.emplace_back("--help");
        const Result help = krctlAlone(words);
        EXPECT_EQ(help.status, 0) << command << ": " << help.errors;
        EXPECT_NE(help.output.find("\nExamples\n"), std::string::npos) << command;
    }
}

TEST(Documents, TheManualPageIsWellFormed)
{
    processes::Child man({"man", "--warnings", "-l", SOURCE_DIR "/krctl/krctl.1"},
                         {{"LC_ALL", "C.UTF-8"}, {"MANWIDTH", "80"}});
    EXPECT_EQ(man.wait(), 0);
    EXPECT_EQ(man.errors(), "");
    for (const char *text : {"sim change-pin", "--pin-stdin", "EXIT STATUS", "KR_PLATFORM"})
        EXPECT_NE(man.output().find(text), std::string::npos) << text;
}

/** The tags of a section of a manual page that begin with a dash. */
std::set<std::string> optionsIn(const std::string &page, const std::string &section)
{
    std::set<std::string> options;
    std::istringstream lines(page.substr(std::min(page.find('\n' + section + '\n') + 1, page.size())));
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && (line.empty() || line.front() == ' '))
        if (line.starts_with("       -")) options.insert(line.substr(7));
    return options;
}

/** The first columns of the help's rows. */
std::set<std::string> optionsOfEveryCommand(const std::string &help)
{
    std::set<std::string> options;
    std::istringstream lines(help.substr(std::min(help.find("\nOptions of every command\n"), help.size())));
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with("  -")) options.insert(line.substr(2, line.find("  ", 2) - 2));
    return options;
}

TEST(Documents, TheManualPageHasTheOptionsOfEveryCommand)
{
    processes::Child man({"man", "-l", SOURCE_DIR "/krctl/krctl.1"}, {{"LC_ALL", "C.UTF-8"}, {"MANWIDTH", "80"}});
    EXPECT_EQ(man.wait(), 0);
    const std::set<std::string> options = optionsIn(man.output(), "OPTIONS");
    EXPECT_TRUE(options.contains("-J, --json")) << man.output();
    EXPECT_EQ(options, optionsOfEveryCommand(krctlAlone({"--help"}).output));
}

TEST(Documents, CompletionOffersWhatKrctlKnows)
{
    processes::Child bash({"bash", "-c",
                           ". '" SOURCE_DIR "/krctl/completion/krctl'\n"
                           "COMP_WORDS=('" KRCTL "' sim unl) COMP_CWORD=2\n"
                           "_krctl\nprintf '%s\\n' \"${COMPREPLY[@]}\"\ncomplete -p krctl"});
    EXPECT_EQ(bash.wait(), 0) << bash.errors();
    EXPECT_EQ(bash.output(), "unlock\nunlock-pin\ncomplete -o default -F _krctl krctl\n");
}

TEST(Documents, TheSchemaTakesNotJustAnything)
{
    EXPECT_EQ(violationOf(R"({"schema":"krctl/1","command":"net auto","data":{"selection":"automatic"}})"), "");
    for (const char *wrong :
         {R"({"schema":"krctl/2","command":"net auto","data":{"selection":"automatic"}})",
          R"({"schema":"krctl/1","command":"net auto","data":{"selection":7}})",
          R"({"schema":"krctl/1","command":"net auto","data":{}})", R"({"schema":"krctl/1","command":"net auto"})",
          R"({"schema":"krctl/1","command":"net auto","data":{"selection":"automatic","more":1}})",
          R"({"schema":"krctl/1","command":"xyzzy","data":{}})",
          R"({"schema":"krctl/1","command":"status","error":{"code":"x","what":"","where":"","next":"","exit":0}})"})
        EXPECT_NE(violationOf(wrong), "") << wrong;
}

/** From top to bottom, as the document has them. */
std::vector<std::string> foldersInOrder()
{
    std::vector<std::string> folders{"main.cpp"};
    std::ifstream document(SOURCE_DIR "/docs/krctl.md");
    const std::regex row(R"(^\| `(\w+)/` \|.*)");
    for (std::string line; std::getline(document, line);) {
        std::smatch parts;
        if (std::regex_match(line, parts, row)) folders.push_back(parts[1]);
    }
    return folders;
}

TEST(Documents, FoldersDependDownwardsOnly)
{
    const std::vector<std::string> order = foldersInOrder();
    const auto levelOf = [&](const std::string &path) {
        return std::find(order.begin(), order.end(), path.substr(0, path.find('/'))) - order.begin();
    };
    const std::filesystem::path root = SOURCE_DIR "/krctl";
    const std::regex include("^#include \"krctl/([^\"]+)\"$");
    int includes = 0;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string from = std::filesystem::relative(entry.path(), root).string();
        if (!from.ends_with(".cpp") && !from.ends_with(".h")) continue;
        EXPECT_LT(levelOf(from), std::ssize(order)) << from << " is in no folder that has a place";
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch parts;
            if (!std::regex_match(line, parts, include)) continue;
            EXPECT_LE(levelOf(from), levelOf(parts[1])) << from << " includes " << parts[1];
            ++includes;
        }
    }
    EXPECT_GT(includes, 0);
}

TEST(Documents, VersionAndHelp)
{
    EXPECT_TRUE(krctlAlone({"--version"}).output.starts_with("krctl "));
    EXPECT_EQ(krctlAlone({"--help"}).status, 0);
    EXPECT_NE(krctlAlone({}).output.find("Begin with \"krctl status\""), std::string::npos);
}

} // namespace
