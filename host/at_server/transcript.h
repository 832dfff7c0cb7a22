/** What goes over the port, as one JSON object an event: written to the record, and told to those who trace. */
#ifndef HOST_AT_SERVER_TRANSCRIPT_H
#define HOST_AT_SERVER_TRANSCRIPT_H

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "host/at_server/json_texts.h"
#include "host/at_server/record_file.h"
#include "host/at_server/reply_collector.h"

namespace host::at_server {

struct RecordSettings {
    std::string file; ///< empty: no record
    size_t mostBytes = 16777216;
    bool withSecrets = false;
};

class Transcript {
  public:
    /** @param trace  takes an event; always masked */
    using Trace = std::function<void(std::string_view json)>;

    explicit Transcript(Trace trace) : trace_(std::move(trace)) {}

    /** Starts the record, or goes on with it at the end of what is there.
     *  @return what is wrong; empty on success */
    std::string open(const RecordSettings &settings);
    /** Opens the record's path anew, for programs that rotate files. Without effect if there is no record. */
    void reopen();

    void sent(std::string_view bytes, uint32_t client);
    void received(std::string_view raw, LineIs what, std::string_view command);
    void failed(std::string_view command, std::string_view why);
    void opened(std::string_view why);
    void closed(std::string_view why);

    /** Whether events are told to anybody; without a record and without this nothing is made of them. */
    void setTraced(bool isTraced) { isTraced_ = isTraced; }

  private:
    void write(Event event, std::string_view masked);
    bool isHeard() const { return file_.isOpen() || isTraced_; }

    const Trace trace_;
    RecordFile file_;
    bool withSecrets_ = false;
    bool isTraced_ = false;
};

} // namespace host::at_server

#endif
