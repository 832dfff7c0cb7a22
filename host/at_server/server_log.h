/** The server's log: a line an event on the standard error, which systemd and others take from there. A reader that does
 *  not read costs lines and never time; how many is told when it reads again. */
#ifndef HOST_AT_SERVER_SERVER_LOG_H
#define HOST_AT_SERVER_SERVER_LOG_H

#include <string>
#include <string_view>

namespace host::at_server {

enum class LogLevel { Error, Warning, Notice, Info, Debug };

/** What is less important is not written; Info at first. */
void setLogLevel(LogLevel level);

/** Parts are put together as they stand. */
void log(LogLevel level, std::initializer_list<std::string_view> parts);

/** A text from outside in quotes, cut to what a log line can take, with what is not printable written as "\x1b". */
std::string quoted(std::string_view text);

} // namespace host::at_server

#endif
