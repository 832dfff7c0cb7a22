/** The settings file of kr-at-server, read for CLI11: an option a line without its dashes, "NAME = VALUE" or, of a flag, its
 *  name alone; a value may stand in quotes, and a line that begins with # says nothing. */
#ifndef HOST_AT_SERVER_SETTINGS_FILE_H
#define HOST_AT_SERVER_SETTINGS_FILE_H

#include <istream>
#include <vector>

#include <CLI/CLI.hpp>

namespace host::at_server {

class SettingsFile : public CLI::ConfigBase {
  public:
    /** @param app  whose options there are; outlives this */
    explicit SettingsFile(const CLI::App &app) : app_(app) {}

    /** A name that stands on several lines has the values of all.
     *  @throw CLI::ConfigError  for a name that is no option */
    std::vector<CLI::ConfigItem> from_config(std::istream &input) const override;

  private:
    const CLI::App &app_;
};

} // namespace host::at_server

#endif
