// A run's record as text: JSON, which is read again, and tables for other programs. Numbers are in
// the "C" locale, whatever the user's is.
#pragma once

#include "results/RunRecord.h"

#include <cstdio>
#include <string>
#include <variant>

// Of the JSON, see docs/run.schema.json. Readers take this one only.
constexpr int kRunSchema = 1;

// The whole record as JSON, with a line end. What is not known is null.
[[nodiscard]] std::string RunAsJson(const RunRecord& record);
// The record, or one line without its end that says what is wrong with the text. Series of tests
// that no version knows are left out.
[[nodiscard]] std::variant<RunRecord, std::string> RunFromJson(const std::string& text);

// The latest span of a series, or why it was not done, as one line of JSON without its end: what a
// journal gathers.
[[nodiscard]] std::string SpanAsJson(const Series& series);
// Puts it behind the record's other spans. False, and nothing is changed, for what SpanAsJson never
// wrote.
[[nodiscard]] bool AddSpan(const std::string& line, RunRecord& record);

// A text as a cell of such a table: in quotes where RFC 4180 wants them; behind '\t', which knows
// no quotes, with blanks for tabs and line ends.
[[nodiscard]] std::string TableCell(std::string cell, char separator);
// A line for each test and count, under a line of names, separator between the cells: ',' (RFC
// 4180) or '\t'. With the same numbers as the JSON, to the last digit.
[[nodiscard]] std::string RunAsTable(const RunRecord& record, char separator);
