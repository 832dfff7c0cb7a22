#include "tests/host/at_server/exploration/modem_model.h"

#include <algorithm>
#include <utility>

namespace exploration {

void ModemModel::hear(std::string_view line, int number, Answer answer)
{
    heard_.push_back({std::string(line), number, std::move(answer)});
}

size_t ModemModel::questions() const
{
    const auto isQuestion = [](const auto &one) { return one.number == kQuestion; };
    return static_cast<size_t>(std::count_if(heard_.begin(), heard_.end(), isQuestion) +
                               std::count_if(owed_.begin(), owed_.end(), isQuestion));
}

ModemModel::Heard ModemModel::takeFirst()
{
    Heard first = std::move(heard_.front());
    heard_.erase(heard_.begin());
    return first;
}

void ModemModel::owe(int number, const Answer &answer)
{
    owed_.push_back({number, answer.lines + answer.result, answer.lines.empty()});
}

std::string ModemModel::takeEcho()
{
    std::string echo = isEchoOn_ ? heard_.front().line + "\r" : std::string();
    if (canEcho_ && heard_.front().line == "ATE1") isEchoOn_ = true;
    return echo;
}

std::string ModemModel::answer()
{
    const std::string echo = takeEcho();
    const Heard first = takeFirst();
    return echo + first.answer.lines + first.answer.result;
}

std::string ModemModel::answerTwiceInTime()
{
    owe(kDuplicate, heard_.front().answer);
    return answer();
}

std::string ModemModel::answerLater()
{
    owe(next(), heard_.front().answer);
    return passOver();
}

std::string ModemModel::beginAnswer()
{
    std::string begin = takeEcho() + heard_.front().answer.lines;
    owe(next(), {"", heard_.front().answer.result});
    takeFirst();
    return begin;
}

std::string ModemModel::passOver()
{
    std::string echo = takeEcho();
    takeFirst();
    return echo;
}

void ModemModel::miss()
{
    takeFirst();
}

ModemModel::Owed ModemModel::takeOwed(size_t which)
{
    Owed owed = std::move(owed_[which]);
    owed_.erase(owed_.begin() + static_cast<ptrdiff_t>(which));
    return owed;
}

bool ModemModel::hasTaken(int number) const
{
    return std::none_of(heard_.begin(), heard_.end(), [&](const Heard &one) { return one.number == number; });
}

} // namespace exploration
