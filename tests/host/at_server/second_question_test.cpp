// What is asked behind a reply, and the case of commands: as tables.
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/at_server/line_noise.h"
#include "host/at_server/numeric_results.h"
#include "host/at_server/second_question.h"

using namespace host::at_server;

namespace {

const Reply kRefused{{}, "ERROR"};
const Reply kOk{{}, "OK"};

TEST(Commands, AreRaisedOutsideQuotesAndParameters)
{
    EXPECT_EQ(inCapitalsOutsideParameters("at+cfun=1"), "AT+CFUN=1");
    EXPECT_EQ(inCapitalsOutsideParameters("at+cereg?"), "AT+CEREG?");
    EXPECT_EQ(inCapitalsOutsideParameters("at+x=abc,\"d;e\";+y=\"z\""), "AT+X=abc,\"d;e\";+Y=\"z\"");
    EXPECT_EQ(inCapitalsOutsideParameters("ate0"), "ATE0");
}

TEST(ARefusal, OfSmallLettersIsAskedInCapitals)
{
    SecondQuestion second(Capitals::AsNeeded);
    EXPECT_EQ(second.settled("at+cfun?", kRefused), std::nullopt);
    EXPECT_EQ(second.takeQuestion(), "AT+CFUN?");
    EXPECT_EQ(second.takeQuestion(), std::nullopt) << "which is sent once";
    const Reply answer{{"+CFUN: 1"}, "OK"};
    EXPECT_EQ(second.settled("at+cfun?", answer), answer);
    EXPECT_TRUE(second.knowsCapitalsOnly());
    EXPECT_EQ(second.asSent("at+cereg?"), "AT+CEREG?");
    second.portOpened();
    EXPECT_EQ(second.asSent("at+cereg?"), "at+cereg?") << "another modem may be there";
}

TEST(ARefusal, OfCapitalsTooIsARefusal)
{
    SecondQuestion second(Capitals::AsNeeded);
    EXPECT_EQ(second.settled("at+cfun?", kRefused), std::nullopt);
    EXPECT_EQ(second.settled("at+cfun?", kRefused), kRefused);
    EXPECT_FALSE(second.knowsCapitalsOnly());
    EXPECT_EQ(second.asSent("at+cfun?"), "at+cfun?");
}

TEST(ARefusal, IsNotAskedAbout)
{
    SecondQuestion second(Capitals::AsNeeded);
    EXPECT_EQ(second.settled("AT+CFUN?", kRefused), kRefused) << "in capitals";
    EXPECT_EQ(second.settled("at+cpin=\"1234\"", kRefused), kRefused) << "with a secret";
    const Reply told{{"+X: 1"}, "ERROR"};
    EXPECT_EQ(second.settled("at+x", told), told) << "behind lines";
    SecondQuestion never(Capitals::Never);
    EXPECT_EQ(never.settled("at+cfun?", kRefused), kRefused) << "where it is switched off";
    EXPECT_EQ(never.asSent("at+cfun?"), "at+cfun?");
    EXPECT_EQ(SecondQuestion(Capitals::Always).asSent("at+cfun?"), "AT+CFUN?");
}

TEST(SmallLetters, AreTriedWithTheFirstCommandThatReads)
{
    SecondQuestion second(Capitals::AsNeeded);
    EXPECT_FALSE(second.isTrial("AT+CFUN?"));
    EXPECT_FALSE(second.isTrial("at+cfun=1")) << "which would do something twice";
    EXPECT_TRUE(second.isTrial("at+cfun?"));
    EXPECT_EQ(second.raised("at+cfun?"), "AT+CFUN?");
    EXPECT_EQ(second.raised("at+cfun?"), std::nullopt) << "once";
    EXPECT_EQ(second.settled("at+cfun?", kOk), kOk);
    EXPECT_TRUE(second.knowsCapitalsOnly());

    second.portOpened();
    EXPECT_EQ(second.settled("at+cfun=1", kOk), kOk);
    EXPECT_FALSE(second.isTrial("at+cfun?")) << "since small letters have been heard";

    second.portOpened();
    EXPECT_EQ(second.raised("at+cfun?"), "AT+CFUN?");
    EXPECT_EQ(second.giveUp(), std::nullopt) << "there is nothing to tell";
    EXPECT_FALSE(second.knowsCapitalsOnly());

    EXPECT_FALSE(SecondQuestion(Capitals::Always).isTrial("at+cfun?"));
    EXPECT_FALSE(SecondQuestion(Capitals::Never).isTrial("at+cfun?"));
}

TEST(Silence, RaisesTheNextCommandInSmallLetters)
{
    SecondQuestion second(Capitals::AsNeeded);
    second.timedOut("AT+CSQ");
    EXPECT_EQ(second.asSent("at+cfun?"), "at+cfun?");
    second.timedOut("at+cfun?");
    EXPECT_EQ(second.asSent("AT+CSQ"), "AT+CSQ");
    EXPECT_EQ(second.settled("AT+CSQ", kOk), kOk);
    EXPECT_FALSE(second.knowsCapitalsOnly()) << "which it does not show";
    EXPECT_EQ(second.asSent("at+cfun?"), "AT+CFUN?");
    EXPECT_EQ(second.settled("AT+CFUN?", kOk), kOk);
    EXPECT_TRUE(second.knowsCapitalsOnly());
}

TEST(Silence, ToCapitalsTooIsNoMatterOfCase)
{
    SecondQuestion second(Capitals::AsNeeded);
    second.timedOut("at+cfun?");
    EXPECT_EQ(second.asSent("at+cfun?"), "AT+CFUN?");
    second.timedOut("AT+CFUN?");
    EXPECT_EQ(second.asSent("at+cfun?"), "at+cfun?");
}

TEST(Alphabets, AreAskedForOnceATextLooksLikeUcs2)
{
    const Reply looksSo{{"+COPS: 0,0,\"00410042\",7"}, "OK"};
    SecondQuestion second(Capitals::AsNeeded);
    EXPECT_EQ(second.settled("AT+COPS?", looksSo), std::nullopt);
    EXPECT_EQ(second.takeQuestion(), "AT+CSCS?");
    EXPECT_EQ(second.settled("AT+COPS?", {{"+CSCS: \"UCS2\""}, "OK"}), looksSo);
    EXPECT_EQ(second.alphabet(), Alphabet::Ucs2);

    EXPECT_EQ(second.settled("AT+COPS?", looksSo), std::nullopt) << "since it may have been switched";
    EXPECT_EQ(second.settled("AT+COPS?", kRefused), looksSo);
    EXPECT_EQ(second.alphabet(), Alphabet::Plain);

    EXPECT_EQ(second.settled("AT+COPS?", looksSo), std::nullopt);
    EXPECT_EQ(second.giveUp(), looksSo) << "where no answer comes";
    EXPECT_EQ(second.giveUp(), std::nullopt);

    const Reply plain{{"+COPS: 0,0,\"Verizon\",7"}, "OK"};
    EXPECT_EQ(second.settled("AT+COPS?", plain), plain);
    EXPECT_EQ(second.takeQuestion(), std::nullopt);
}

TEST(NumbersOfResults, AreKnownFromTheAgreement)
{
    NumericResults results;
    EXPECT_EQ(results.inWords("0", "AT+X", false), "0");
    EXPECT_EQ(results.inWords("0", "AT", true), "OK");
    EXPECT_EQ(results.inWords("0", "AT+X", false), "OK");
    EXPECT_EQ(results.inWords("4 ", "AT+X", false), "ERROR");
    EXPECT_EQ(results.inWords("2", "", false), "RING");
    EXPECT_EQ(results.inWords("3", "ATD1;", false), "NO CARRIER");
    EXPECT_EQ(results.inWords("7", "ATD1;", false), "BUSY");
    EXPECT_EQ(results.inWords("7", "AT+X", false), "7") << "which a call alone ends with";
    EXPECT_EQ(results.inWords("310260123456789", "AT+CIMI", false), "310260123456789");
    EXPECT_EQ(results.inWords("+CSQ: 0", "AT+CSQ", false), "+CSQ: 0");
    EXPECT_EQ(results.inWords("OK", "AT+X", false), "OK");
    EXPECT_EQ(results.inWords("0", "AT+X", false), "0") << "now that it speaks in words";
}

TEST(NumbersOfResults, AreNotKnownFromOtherDigits)
{
    NumericResults results;
    EXPECT_EQ(results.inWords("7", "AT", true), "7");
    EXPECT_EQ(results.inWords("0", "AT+X", false), "0");
}

TEST(Noise, IsTakenOffResultsAndNames)
{
    EXPECT_EQ(withoutNoise("\xFF\xFEOK\xFF", "AT"), "OK");
    EXPECT_EQ(withoutNoise("\xFF+CSQ: 20,99", "AT+CSQ"), "+CSQ: 20,99");
    EXPECT_EQ(withoutNoise("+COPS: 0,0,\xC3\xA9", "AT+COPS?"), "+COPS: 0,0,\xC3\xA9");
    EXPECT_EQ(withoutNoise("\xC3\x89toile", "AT+CGMM"), "\xC3\x89toile") << "a text";
    EXPECT_TRUE(isNoise("\xFF\xFE"));
    EXPECT_TRUE(isNoise("\x80"));
    EXPECT_FALSE(isNoise("\xD0\x96\xE4\xB8\xAD")) << "UTF-8";
    EXPECT_FALSE(isNoise("\xFFx"));
    EXPECT_FALSE(isNoise(""));
    EXPECT_TRUE(isNoText('\x11') && isNoText('\x7F') && isNoText('\0'));
    EXPECT_FALSE(isNoText('\t') || isNoText(' ') || isNoText('\xFF'));
}

} // namespace
