// The machines of a comparison, in the order in which they are shown: the run on this machine, if
// there is one, first. Each machine's list cursor marks the metric that the chart shows.
#pragma once

#include "results/Results.h"

#include <Point.h>

#include <cstdio>

class ResultList : public LinkList<Results> {
public:
    // The greatest rate of the machines' current metrics, 0 if no machine has one.
    [[nodiscard]] float MaxRate() const;
    // The machine whose label where lies in; its expanded flag is toggled. Null if there is none.
    Results* Contains(BPoint where);
    // The greatest processor count, 0 for an empty list.
    [[nodiscard]] int MaxNbrCpus() const;

    // Makes the metric of probe's description current in every machine. A machine without it has
    // no current metric then and is reported on standard error.
    void MakeCurrent(const Metric& probe);
    // Makes the first metric current in every machine; one without metrics is reported.
    void FirstCurrent();

    // Writes each machine's line of the table, so many columns a metric.
    void Save(FILE* file, const int& columns) const;
    // Each machine's description and processor counts on standard error.
    void PrintToStream() const;
};
