/** JSON output held to krctl.schema.json. */
#ifndef TESTS_KRCTL_JSON_CHECK_H
#define TESTS_KRCTL_JSON_CHECK_H

#include <set>
#include <string>

/** @return empty, or what is wrong with the text: no JSON, or not as the schema says */
std::string violationOf(const std::string &text);

/** Each line by itself. */
std::string violationOfLines(const std::string &text);

/** The keys of the values within "data", with dots, as the key-value output has them. */
std::set<std::string> flatKeysOf(const std::string &text);

/** The text of a value, by its path: "/data/sim/state"; "missing" if there is none. */
std::string valueAt(const std::string &text, const std::string &path);

#endif
