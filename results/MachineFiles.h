// The machines of whatever a user opens: a results file, the JSON of a run, the zip or tar that
// "Save..." makes, or a folder of these. Read as well as they can be, for a chart to look at;
// see MeasuredMachines.h for figures on which somebody will act.
#pragma once

#include "results/Results.h"

#include <MachineDetails.h>

#include <string>

// The processor's model, all memory and the kernel, as far as they are known: each a line with its
// line end in front.
[[nodiscard]] std::string TrueName(const MachineDetails& details);

// Appends the machines of what lies at path, each with its file; of a run's JSON the rates that its
// repeats have in the middle. Returns an empty string, or why there is none: "is no results file".
// Only plain files are opened, so that no pipe is waited for. Within archives and folders, what is
// none of these is passed over, as are links, hidden files, and archives in archives of archives;
// see FilesOfArchive() for the archives that are refused. Nothing is written anywhere.
[[nodiscard]] std::string ReadMachineFiles(const std::string& path, ResultList& list);
