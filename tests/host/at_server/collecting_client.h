/** What a collector makes of bytes, in texts as clients get them. */
#ifndef TESTS_HOST_AT_SERVER_COLLECTING_CLIENT_H
#define TESTS_HOST_AT_SERVER_COLLECTING_CLIENT_H

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/at_server/reply_collector.h"
#include "host/at_server/translation/translation.h"

class CollectingClient : private host::at_server::ReplyCollector::Listener {
  public:
    explicit CollectingClient(host::at_server::Family family = host::at_server::Family::Default) : family_(family) {}

    void send(std::string_view command, bool isEchoed = false)
    {
        command_ = command;
        collector.expectReply(command, isEchoed);
    }
    void feed(std::string_view bytes, size_t piece)
    {
        for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size())))
            collector.feed(bytes.substr(0, piece));
    }
    void clear() { replies = strays = early = reports = discarded = raw = ""; }

    host::at_server::ReplyCollector collector{*this};
    std::string replies;
    std::string strays;
    std::string early;
    size_t foreign = 0;
    std::string reports;
    std::string discarded;
    std::string raw;
    size_t tooLong = 0;

  private:
    void onReply(host::at_server::Reply &&reply) override
    {
        if (reply.isTooLong)
            ++tooLong;
        else
            replies += host::at_server::asLibraryReads(std::move(reply), command_, family_);
    }
    void onStray(std::string_view result) override { strays.append(result).append("|"); }
    void onEarly(std::string_view result) override { early.append(result).append("|"); }
    void onForeign() override { ++foreign; }
    void onReport(const std::vector<std::string> &lines) override
    {
        reports += host::at_server::reportAsLibraryReads(lines);
    }
    void onLine(std::string_view line, host::at_server::LineIs what) override
    {
        raw += line;
        if (what == host::at_server::LineIs::Discarded) discarded += line;
    }

    host::at_server::Family family_;
    std::string command_;
};

#endif
