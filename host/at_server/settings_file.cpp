#include "host/at_server/settings_file.h"

#include <algorithm>
#include <string>

namespace host::at_server {

std::vector<CLI::ConfigItem> SettingsFile::from_config(std::istream &input) const
{
    std::vector<CLI::ConfigItem> settings;
    int number = 0;
    for (std::string line; std::getline(input, line);) {
        ++number;
        CLI::detail::trim(line);
        if (line.empty() || line.front() == '#') continue;
        const size_t sign = line.find('=');
        const std::string name = CLI::detail::trim_copy(line.substr(0, sign));
        std::string value = sign == std::string::npos ? "true" : CLI::detail::trim_copy(line.substr(sign + 1));
        CLI::detail::remove_quotes(value);

        const CLI::Option *const option = app_.get_option_no_throw("--" + name);
        if (option == nullptr || !option->get_configurable())
            throw CLI::ConfigError("line " + std::to_string(number) + " of the settings: there is no setting " + name);
        auto place =
            std::find_if(settings.begin(), settings.end(), [&](const auto &item) { return item.name == name; });
        if (place == settings.end()) place = settings.insert(settings.end(), CLI::ConfigItem{{}, name, {}});
        place->inputs.push_back(std::move(value));
    }
    return settings;
}

} // namespace host::at_server
