#include <set>

#include <gtest/gtest.h>

#include "krctl/command_line/completion.h"
#include "krctl/command_line/help.h"
#include "krctl/command_line/invocation.h"

namespace {

using namespace krctl;
using Words = std::vector<std::string>;

Failure failureOfLine(const Words &words)
{
    try {
        const Invocation invocation = invocationOf(words);
        ADD_FAILURE() << "it was understood";
    } catch (const Failure &failure) {
        return failure;
    }
    return {};
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
    EXPECT_EQ(appearanceOf({"status", "-J"}).form, Form::Json);
    EXPECT_EQ(appearanceOf({"--key-value", "status"}).form, Form::KeyValue);
    EXPECT_FALSE(appearanceOf({"status", "--no-color"}).wantsColour);
    EXPECT_EQ(appearanceOf({"trace", "record", "f", "--", "-J", "status"}).form, Form::Table);
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
          Row{{"-J", "--platform", "mtk", "power", "o"}, {"on", "off"}}, Row{{"at", ""}, {}}})
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
