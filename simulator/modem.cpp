#include "simulator/modem.h"

#include <utility>

#include "simulator/text.h"

namespace simulator {
namespace {

constexpr char kBackspace = '\b';

/** Standard framing: a line break around the body, each line closed, an empty line before the final result. */
std::string framed(const std::vector<std::string> &lines, std::string_view finalResult)
{
    std::string text;
    if (!lines.empty()) text += "\r\n";
    for (const std::string &line : lines)
        text += concat(line, "\r\n");
    return concat(text, "\r\n", finalResult, "\r\n");
}

} // namespace

Modem::Modem(Family family, const Scenario &scenario, uint64_t seed, Port port, Replay *replay)
    : port_(std::move(port)),
      device_(family, scenario, seed, scheduler_, [this](const std::string &line) { report(line); }),
      faults_(scenario.faults, seed + 1), replay_(replay)
{
    restart();
}

void Modem::restart()
{
    device_.powerUp();
    if (replay_ == nullptr) return;
    for (const Replay::Piece &piece : replay_->opening())
        scheduler_.after(piece.atMs, [this, bytes = piece.bytes] { port_.write(bytes); });
}

void Modem::receive(std::string_view bytes)
{
    if (!isPlugged_) return;
    for (const char character : bytes) {
        if (running_ && running_->isAbortable && running_->wait && character != '\n')
            abort();
        else
            inbox_ += character;
        work();
    }
    if (!echo_.empty()) port_.write(std::exchange(echo_, {}));
}

void Modem::work()
{
    while (isPlugged_ && !running_ && outbox_.empty() && !inbox_.empty()) {
        const char character = inbox_.front();
        inbox_.erase(0, 1);
        takeCharacter(character);
    }
}

void Modem::takeCharacter(char character)
{
    if (device_.settings.echo) echo_ += character;
    if (character == '\r') {
        const std::string line = std::exchange(line_, {});
        const bool wasOverlong = std::exchange(isOverlong_, false);
        if (!echo_.empty()) port_.write(std::exchange(echo_, {}));
        if (wasOverlong)
            reply({}, framed({}, "ERROR"));
        else
            start(line);
    } else if (character == kBackspace) {
        if (!line_.empty()) line_.pop_back();
    } else if (character != '\n') {
        if (line_.size() < kMaxLine)
            line_ += character;
        else
            isOverlong_ = true;
    }
}

void Modem::start(const std::string &line)
{
    if (replay_ != nullptr) return startReplay(line);
    std::optional<std::vector<Command>> commands = parseCommandLine(line);
    if (!commands) return;
    running_ = Running{line, std::move(*commands), 0, {}, {}, false};
    step();
}

void Modem::startReplay(const std::string &line)
{
    if (line.empty()) return;
    std::vector<Piece> pieces;
    int64_t beforeMs = 0;
    const Replay::Answer answer = replay_->answer(line);
    for (const Replay::Piece &piece : answer.reply) {
        pieces.push_back({static_cast<int>(piece.atMs - beforeMs), piece.bytes, false, -1});
        beforeMs = piece.atMs;
    }
    for (const Replay::Piece &piece : answer.later)
        scheduler_.after(piece.atMs, [this, bytes = piece.bytes] { port_.write(bytes); });
    emit(std::move(pieces));
}

int Modem::delayOf(const Running &running, const Command &command) const
{
    const Timing &timing = device_.scenario.timing;
    const std::string line = upperCase(running.line);
    for (const auto &[beginning, delayMs] : timing.commands) {
        if (line.compare(0, beginning.size(), beginning) == 0) return delayMs;
    }
    const CommandRow *const row = findCommand(command);
    if (row == nullptr || !contains(row->families, device_.family) || device_.obstacle(row->needs))
        return timing.commandMs;
    switch (paceOf(*row, command)) {
    case Pace::Quick:
        break;
    case Pace::Sim:
        return timing.simMs;
    case Pace::Power:
        return timing.powerMs;
    case Pace::Select:
        return timing.selectMs;
    case Pace::Scan:
        return timing.scanMs;
    }
    return timing.commandMs;
}

/** Waits as long as the next command takes, or runs it. */
void Modem::step()
{
    if (running_->next == running_->commands.size()) return finish({});
    const Command &command = running_->commands[running_->next];
    const int delayMs = delayOf(*running_, command);
    if (delayMs == 0) return runNext();
    const CommandRow *const row = findCommand(command);
    const Pace pace = row != nullptr ? paceOf(*row, command) : Pace::Quick;
    running_->isAbortable = pace == Pace::Scan || pace == Pace::Select;
    running_->wait = scheduler_.after(delayMs, [this] {
        running_->wait.reset();
        runNext();
        work();
    });
}

void Modem::runNext()
{
    isAnswering_ = true;
    const Reply reply = answer(device_, running_->commands[running_->next++]);
    isAnswering_ = false;
    if (reply.end != Reply::End::Ok) return finish(reply);
    running_->lines.insert(running_->lines.end(), reply.lines.begin(), reply.lines.end());
    step();
}

/** V.250 5.6.1: the character that aborts a command is no part of a next one. */
void Modem::abort()
{
    scheduler_.cancel(*running_->wait);
    running_->lines.clear();
    finish({});
}

void Modem::finish(const Reply &last)
{
    const Running done = std::move(*running_);
    running_.reset();
    reply(done.line, framed(done.lines, finalResult(last, device_.settings.cmee)));
}

void Modem::reply(const std::string &line, const std::string &text)
{
    emit(faults_.apply(line, text));
}

void Modem::emit(std::vector<Piece> pieces)
{
    outbox_.assign(pieces.begin(), pieces.end());
    emitNext();
}

/** Pieces without a delay go out at once; one with a delay waits for its time. */
void Modem::emitNext()
{
    while (!outbox_.empty()) {
        Piece &piece = outbox_.front();
        if (piece.delayMs > 0) {
            const int delayMs = std::exchange(piece.delayMs, 0);
            scheduler_.after(delayMs, [this, cycle = powerCycle_] {
                if (cycle == powerCycle_) emitNext();
            });
            return;
        }
        const Piece out = std::move(piece);
        outbox_.pop_front();
        if (!out.bytes.empty()) port_.write(out.bytes);
        if (out.unplugs) return unplug(out.unplugMs);
    }
    idle();
}

/** Between two lines: reports that have waited come first. */
void Modem::idle()
{
    for (const std::string &line : std::exchange(saved_, {}))
        report(line);
    if (device_.resetsAfterReply) {
        device_.powerDown();
        device_.powerUp();
    }
    work();
}

void Modem::report(const std::string &line)
{
    if (!isPlugged_) return;
    if (isAnswering_)
        saved_.push_back(line);
    else
        port_.write(concat("\r\n", line, "\r\n"));
}

void Modem::hangUp()
{
    inbox_.clear();
    line_.clear();
    echo_.clear();
    isOverlong_ = false;
}

void Modem::unplug(int forMs)
{
    if (!isPlugged_) return;
    ++powerCycle_;
    isPlugged_ = false;
    hangUp();
    if (running_ && running_->wait) scheduler_.cancel(*running_->wait);
    running_.reset();
    outbox_.clear();
    saved_.clear();
    device_.powerDown();
    port_.plug(false);
    if (forMs < 0) return;
    scheduler_.after(forMs, [this, cycle = powerCycle_] {
        if (cycle == powerCycle_) plug();
    });
}

void Modem::plug()
{
    if (isPlugged_) return;
    isPlugged_ = true;
    port_.plug(true);
    restart();
}

} // namespace simulator
