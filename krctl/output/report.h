/** What a command has to say, once for all forms of output: people read it as tables and bars, programs as JSON or as
 *  lines of keys and values. */
#ifndef KRCTL_OUTPUT_REPORT_H
#define KRCTL_OUTPUT_REPORT_H

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace krctl {

enum class Tone { Plain, Title, Good, Fair, Bad, Dim };

/** Nothing stands for unknown. */
using Value = std::variant<std::monostate, bool, int64_t, double, std::string, std::vector<std::string>>;

/** How good a measured value is. */
struct Quality {
    std::string key{};  ///< for programs
    std::string word{}; ///< empty while the value is unknown
    Tone tone = Tone::Plain;
    double fraction = 0; ///< of a full bar, 0 to 1
};

struct Field {
    std::string label{}; ///< for people; empty for what only programs want to know
    std::string key{};   ///< for programs, with the unit in it; empty for what only people want to know
    Value value{};
    std::string text{}; ///< for people, with the unit; empty if the value speaks for itself
    Tone tone = Tone::Plain;
    std::optional<Quality> quality{}; ///< of a measured value: drawn as a bar, and a field of its own for programs
    bool onlyIfKnown = false;         ///< people do not see it while it is unknown
};

/** The word of a value for people: its text, or the value written out, "-" for unknown. */
std::string textOf(const Field &field);

using Fields = std::vector<Field>;

struct Section {
    enum class Kind {
        Properties, ///< one thing and its properties
        Table,      ///< many things with the same properties
        Lines,      ///< texts as they are
    };

    std::string title{}; ///< for people; may be empty
    std::string key{};   ///< for programs; empty for fields that stand at the top
    Kind kind = Kind::Properties;
    Fields fields{};
    std::vector<Fields> rows{};       ///< of a table; each has the same fields
    std::vector<std::string> lines{}; ///< of lines
    std::string whenEmpty{};          ///< for people, instead of a table without rows

    Section &add(Field field);
    /** A code of the modem: people see the word, programs the word as an identifier ("not_registered") and, under
     *  "<codeKey>_code", the number.
     *  @param code  nothing if the modem did not tell it
     *  @param word  empty if it has none; people then see the number */
    Section &addCode(const std::string &label, const std::string &codeKey, std::optional<int32_t> code,
                     const std::string &word);
};

struct Report {
    std::vector<Section> sections{};
    std::vector<std::string> notes{}; ///< what else there is to know, a sentence each

    Section &addSection(std::string title, std::string key);
    /** A single sentence for people that says what was done, with the fields behind it for programs. */
    static Report done(std::string sentence, Fields fields = {});

    std::string sentence{}; ///< for people, before all sections
    int exitStatus = 0;     ///< of a command that ran another program
    bool isEmpty() const { return sections.empty() && notes.empty() && sentence.empty(); }
};

/** Words as a sentence has them: "one, two, three". */
std::string listed(const std::vector<std::string> &words);

/** A word for people as an identifier for programs: "no SIM" is "no_sim". */
std::string identifier(const std::string &word);

// Fields by the type of their value.
Field textField(std::string label, std::string key, std::string value); ///< an empty text is unknown
Field listField(std::string label, std::string key, std::vector<std::string> values);
Field wordField(std::string label, std::string key, const std::string &word); ///< programs get its identifier
Field numberField(std::string label, std::string key, std::optional<int64_t> value, const std::string &unit = {});
Field realField(std::string label, std::string key, std::optional<double> value, const std::string &unit = {});
Field flagField(std::string label, std::string key, std::optional<bool> value, const std::string &whenTrue = "yes",
                const std::string &whenFalse = "no");

} // namespace krctl

#endif
