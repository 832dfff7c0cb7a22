#include <algorithm>
#include <fstream>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "krctl/command_line/completion.h"
#include "krctl/command_line/global_options.h"
#include "krctl/command_line/help.h"
#include "krctl/command_line/invocation.h"

namespace {

using namespace krctl;
using Words = std::vector<std::string>;

Failure failureOfLine(const Words &words)
{
    const Invocation invocation = invocationOf(words);
    EXPECT_TRUE(invocation.failure) << "it was understood";
    EXPECT_EQ(invocation.command, nullptr);
    return invocation.failure.value_or(Failure{});
}

TEST(CommandLine, ArgumentsAreTextsNumbersAndWords)
{
    const Invocation select = invocationOf({"net", "select", "46000", "--act", "umts"});
    ASSERT_NE(select.command, nullptr);
    EXPECT_STREQ(select.command->path, "net select");
    EXPECT_EQ(select.arguments.text("CODE"), "46000");
    EXPECT_EQ(select.arguments.number("--act"), 2);

    const Invocation prefer = invocationOf({"net", "prefer", "12"});
    EXPECT_EQ(prefer.arguments.number("PREFERENCE"), 12);
    EXPECT_FALSE(prefer.arguments.has("--reset-bands"));
    EXPECT_EQ(invocationOf({"net", "prefer", "wcdma-first"}).arguments.number("PREFERENCE"), 2);
    EXPECT_EQ(invocationOf({"settings", "named", "X", "-5"}).arguments.number("VALUE"), -5);
}

TEST(CommandLine, OptionsOfEveryCommandStandAnywhere)
{
    for (const Words &words : {Words{"--socket", "/s", "sim", "status", "--platform", "mtk"},
                               Words{"sim", "--platform", "mtk", "--socket=/s", "status"}}) {
        const Invocation invocation = invocationOf(words);
        EXPECT_EQ(invocation.session.socket, "/s");
        EXPECT_EQ(invocation.session.platform, "mtk");
    }
    EXPECT_FALSE(invocationOf({"status", "--no-color"}).wantsColour);
    EXPECT_TRUE(invocationOf({"status"}).wantsColour);
}

TEST(CommandLine, TheLastFormCounts)
{
    struct Row {
        Words words;
        Form form;
    };
    for (const Row &row :
         {Row{{"status"}, Form::Table}, Row{{"status", "-J"}, Form::Json},
          Row{{"--key-value", "status"}, Form::KeyValue}, Row{{"-K", "sim", "--json", "status"}, Form::Json},
          Row{{"--json", "status", "-K"}, Form::KeyValue}, Row{{"-JK", "status"}, Form::KeyValue},
          Row{{"status", "--json=false"}, Form::Table},
          Row{{"trace", "record", "f", "--", "-J", "status"}, Form::Table},
          Row{{"--socket", "-J", "status"}, Form::Table}})
        EXPECT_EQ(invocationOf(row.words).form, row.form) << testing::PrintToString(row.words);
}

TEST(CommandLine, MistakesAreToldInTheFormAndForTheCommandThatWereUnderstood)
{
    struct Row {
        Words words;
        Form form;
        const char *path;
    };
    for (const Row &row : {Row{{"-J", "--bogus"}, Form::Json, ""}, Row{{"--bogus", "-J"}, Form::Json, ""},
                           Row{{"-J", "status", "--bogus"}, Form::Json, "status"},
                           Row{{"--bogus", "status", "-K"}, Form::KeyValue, "status"},
                           Row{{"sim", "--bogus", "value", "status", "-J"}, Form::Json, "sim status"},
                           Row{{"-J", "--platform", "mtk", "status", "now"}, Form::Json, "status"},
                           Row{{"-J", "net", "select"}, Form::Json, "net select"}, Row{{"-J", "net"}, Form::Json, ""},
                           Row{{"-J", "sim", "unblok"}, Form::Json, ""},
                           Row{{"net", "select", "46000", "-J", "--act"}, Form::Json, "net select"},
                           Row{{"-J", "--socket"}, Form::Json, ""}, Row{{"status", "--", "-J"}, Form::Table, "status"},
                           Row{{"status", "-J", "--", "x"}, Form::Json, "status"},
                           Row{{"settings", "echo", "maybe", "-J"}, Form::Json, "settings echo"}}) {
        SCOPED_TRACE(testing::PrintToString(row.words));
        const Invocation invocation = invocationOf(row.words);
        EXPECT_EQ(failureOfLine(row.words).exitStatus, kUsage);
        EXPECT_EQ(invocation.form, row.form);
        EXPECT_EQ(invocation.path, row.path);
    }
}

TEST(CommandLine, AnArgumentMayBeCalledLikeACommand)
{
    EXPECT_STREQ(invocationOf({"net", "register-mode", "auto"}).command->path, "net register-mode");
    EXPECT_EQ(invocationOf({"at", "status"}).arguments.text("COMMAND"), "status");
    EXPECT_EQ(invocationOf({"trace", "record", "replay"}).arguments.text("FILE"), "replay");
}

TEST(CommandLine, WhatStandsBehindTheDashesIsForAnother)
{
    const Invocation record = invocationOf({"trace", "record", "f", "--", "at", "AT+CSQ", "--json"});
    EXPECT_EQ(record.arguments.rest, (Words{"at", "AT+CSQ", "--json"}));
    EXPECT_EQ(failureOfLine({"status", "--", "x"}).exitStatus, kUsage);
}

TEST(CommandLine, MistakesAreToldWithWhatIsMeant)
{
    struct Row {
        Words words;
        const char *what;
        const char *next;
    };
    for (const Row &row :
         {Row{{"stauts"}, "There is no command \"stauts\" here.", "Did you mean \"krctl status\"?"},
          Row{{"sim", "unblok"}, "There is no command \"unblok\" here.", "Did you mean \"krctl sim unblock\"?"},
          Row{{"signal", "--wacth"}, "There is no option \"--wacth\" here.", "Did you mean \"--watch\"?"},
          Row{{"xyzzy"}, "There is no command \"xyzzy\" here.", "See \"krctl --help\"."},
          Row{{"status", "now"}, "\"now\" is more than this command takes.", "See \"krctl status --help\"."},
          Row{{"net", "select"},
              "CODE is missing: the operator's MCC and MNC, such as 46000.",
              "See \"krctl net select --help\"."},
          Row{{"net", "prefer", "5g"},
              "\"5g\" is not possible for PREFERENCE.",
              "Use auto, gsm, wcdma, lte, gsm-first, wcdma-first, lte-first or a number from 0 to 22."},
          Row{{"net", "prefer", "23"},
              "\"23\" is not possible for PREFERENCE.",
              "Use auto, gsm, wcdma, lte, gsm-first, wcdma-first, lte-first or a number from 0 to 22."},
          Row{{"settings", "echo", "maybe"}, "\"maybe\" is not possible for STATE.", "Use one of on, off."},
          Row{{"data", "profile"},
              "\"krctl data profile\" needs a word more.",
              "Use one of show, set; \"krctl data profile --help\" says more."}}) {
        const Failure failure = failureOfLine(row.words);
        EXPECT_EQ(failure.exitStatus, kUsage);
        EXPECT_EQ(failure.what, row.what);
        EXPECT_EQ(failure.next, row.next);
    }
}

TEST(CommandLine, EveryCommandHasHelpWithExamplesThatWork)
{
    std::set<std::string> paths;
    for (const Command &command : commands()) {
        EXPECT_TRUE(paths.insert(command.path).second) << command.path;
        Words words;
        for (std::string path = command.path; !path.empty(); path.erase(0, words.back().size() + 1))
            words.push_back(path.substr(0, path.find(' ')));
        words.emplace_back("--help");
        const std::string help = invocationOf(words).text;
        EXPECT_TRUE(help.starts_with("krctl " + std::string(command.path) + ": ")) << help;
        EXPECT_NE(help.find("\nExamples\n  "), std::string::npos) << command.path;
        EXPECT_NE(std::string(command.examples).find("krctl "), std::string::npos);
        for (size_t start = 0; start < help.size(); start = help.find('\n', start) + 1)
            EXPECT_LE(help.find('\n', start) - start, 80U) << help.substr(start, 100);
    }
    for (const Noun &noun : nouns())
        EXPECT_NE(helpFor("").find(std::string("\n  ") + noun.name), std::string::npos);
}

TEST(CommandLine, HelpHasTheOptionsOfEveryCommand)
{
    const std::string options = "Options of every command"
                                " -J, --json one JSON object, as krctl.schema.json describes it"
                                " -K, --key-value lines of key=value"
                                " --no-color no colours, whatever the terminal can do"
                                " --socket PATH socket of kr-at-server (KR_AT_SERVER)"
                                " --platform NAME family of the modem: " +
                                listed(wordsOf(kPlatforms)) +
                                " (KR_PLATFORM)"
                                " --version the version"
                                " -h, --help this help ";
    for (const char *path : {"", "net", "status"}) {
        const std::string help = std::regex_replace(helpFor(path), std::regex("\\s+"), " ");
        EXPECT_NE(help.find(options), std::string::npos) << help;
    }
}

TEST(CommandLine, EveryOptionOfEveryCommandIsTakenWhereverItStands)
{
    for (const Parameter &option : globalOptions()) {
        for (const char *name : {option.name, option.shortName}) {
            if (name == nullptr) continue;
            for (Words words : {Words{name, "power", "on"}, Words{"power", name, "on"}, Words{"power", "on", name}}) {
                if (option.takesValue()) words.insert(std::find(words.begin(), words.end(), name) + 1, "value");
                const Invocation invocation = invocationOf(words);
                EXPECT_FALSE(invocation.failure) << testing::PrintToString(words) << invocation.failure->what;
                EXPECT_EQ(invocation.path, "power on");
            }
        }
    }
}

/** Short and long names of all options, of every command and of single ones. */
std::set<std::string> allOptions()
{
    std::set<std::string> names;
    const auto add = [&](const Parameter &parameter) {
        if (parameter.isOption()) names.insert(parameter.name);
        if (parameter.shortName != nullptr) names.insert(parameter.shortName);
    };
    for (const Parameter &option : globalOptions())
        add(option);
    for (const Command &command : commands())
        for (const Parameter &parameter : command.parameters)
            add(parameter);
    return names;
}

/** The texts of a document as krctl's user reads them: no marks of the manual page, nothing that is for jq. */
std::string plainTextOf(const char *path)
{
    std::ifstream file(path);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    text = std::regex_replace(text, std::regex(R"(\\f[BIR])"), " ");
    text = std::regex_replace(text, std::regex(R"(\\-)"), "-");
    return std::regex_replace(text, std::regex("jq -r"), "jq");
}

TEST(CommandLine, DocumentsNameNoOptionThatIsNone)
{
    const std::set<std::string> known = allOptions();
    const std::regex dashed(R"((?:^|[\s`"\[(])(--?[A-Za-z][a-z-]*))");
    for (const char *path : {SOURCE_DIR "/docs/krctl.md", SOURCE_DIR "/krctl/krctl.1"}) {
        const std::string text = plainTextOf(path);
        size_t named = 0;
        for (std::sregex_iterator found(text.begin(), text.end(), dashed); found != std::sregex_iterator(); ++found) {
            EXPECT_TRUE(known.contains((*found)[1])) << path << " names " << (*found)[1];
            ++named;
        }
        EXPECT_GT(named, 0U) << path;
    }
}

TEST(CommandLine, AloneItShowsAShortHelp)
{
    EXPECT_EQ(invocationOf({}).command, nullptr);
    EXPECT_NE(invocationOf({}).text.find("Begin with \"krctl status\""), std::string::npos);
    EXPECT_EQ(invocationOf({"--version"}).text.find("krctl "), 0U);
}

TEST(Completion, OffersWhatMayStandThere)
{
    struct Row {
        Words words;
        Words offered;
    };
    for (const Row &row :
         {Row{{"st"}, {"status"}}, Row{{"sim", "unl"}, {"unlock", "unlock-pin"}},
          Row{{"data", "profile", ""}, {"show", "set"}}, Row{{"net", "select", "46000", "--a"}, {"--act"}},
          Row{{"net", "select", "46000", "--act", ""}, {"gsm", "umts", "lte"}}, Row{{"--platform", "m"}, {"mtk"}},
          Row{{"settings", "reports", "calls", "p"}, {"place"}},
          Row{{"-J", "--platform", "mtk", "power", "o"}, {"on", "off"}}, Row{{"at", ""}, {}}, Row{{"--socket", ""}, {}},
          Row{{"--socket", "power", "p"}, {"power"}}, Row{{"trace", "record", "f", "--", ""}, {}},
          Row{{"xyzzy", ""}, {}},
          Row{{"watch", "--"},
              {"--json", "--key-value", "--no-color", "--socket", "--platform", "--version", "--help", "--all",
               "--as-is"}}})
        EXPECT_EQ(completionsOf(row.words), row.offered) << row.words.back();
}

TEST(Completion, LeadsToEveryCommand)
{
    for (const Command &command : commands()) {
        Words words;
        for (std::string path = command.path; !path.empty();) {
            const std::string word = path.substr(0, path.find(' '));
            words.push_back(word);
            const Words offered = completionsOf(words);
            EXPECT_NE(std::find(offered.begin(), offered.end(), word), offered.end()) << command.path;
            path.erase(0, word.size() + 1);
        }
    }
}

} // namespace
