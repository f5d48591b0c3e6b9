// Machines as files tell of them: results files, the JSON of runs, the archives that "Save..." in
// the window makes, and folders of all these.
#pragma once

#include "results/RunRecord.h"

#include <string>
#include <variant>
#include <vector>

struct MeasuredMachine {
    // Of a results file only the description and one span for each test and count; of its version,
    // compiler and display nothing is known.
    RunRecord record;
    std::string path; // as it was given or found; within an archive "fleet.zip: results/one"
    std::string file; // the last part of it; "standard input" for "-"
    std::string date; // the run's start, or when the file was written: "2026-11-21T14:03:05..."
    std::string name; // see NameMachines()
};

// The machines of all files, in their order; "-" is the standard input. Each file is told by its
// contents:
//
//     results file     strictly, see RunsFromResults()
//     JSON             see RunFromJson()
//     zip, tar, tar.gz the files in it that are one of these, archives too, once; others are passed
//                      over. See FilesOfArchive() for what is refused.
//     folder           its files and those below it, by path. Hidden ones and links are passed
//     over,
//                      and files that are none of these, unless they are called so: .results,
//                      .json, .zip, .tar, .tgz and .gz.
//
// Each path gives one machine at least. The first that holds none, or a file that is damaged, over
// 32 MB or cannot be read, is one line without its end that names the file in angle brackets.
// Nothing is written anywhere. Several threads read where there are many files.
[[nodiscard]] std::variant<std::vector<MeasuredMachine>, std::string> ReadMachines(
    const std::vector<std::string>& paths);

// Gives each a name that no other has: the label that its user gave it, else its description or,
// where others have the same, the first of file, date and path that no other of them has. What even
// so is one of several has its place among all behind it: "#3".
void NameMachines(std::vector<MeasuredMachine>& machines);
