// What may be said of two measurements of the same tests, row by row: which became faster or
// slower, and of which nothing can be told. Arithmetic alone.
#pragma once

#include <optional>
#include <vector>

namespace statistics {

inline constexpr double kLevel = 0.05; // of the whole table: the chance of one wrong difference

// Why nothing can be told of a row.
enum class Untold { kMarked, kTooFewRepeats, kOtherVersion, kOtherCompiler, kOtherDisplay };

enum class Verdict { kFaster, kSlower, kNoRealDifference, kCannotTell };

// A test at a number of processors. Both sets are seconds for the same amount of work, never rates
// and never the printed figures: the shorter is the faster in tests with a rate and in those whose
// figure is in seconds, so that no direction is asked for. A test that fixes its duration and
// counts the work gives the seconds for one unit of it, else its times are equal by design.
struct Row {
    std::vector<double> baseline;
    std::vector<double> candidate;
    std::optional<Untold> untold; // what the times do not show; Judge() itself counts the repeats
    double least = 0; // a difference up to this share of the time is not worth a verdict
};

struct Judgement {
    Verdict verdict = Verdict::kCannotTell; // of the candidate
    std::optional<Untold> untold; // set where the verdict is kCannotTell
    std::optional<double> speed; // the candidate's over the baseline's; above 1: faster
    std::optional<double> p; // after Holm's correction; nothing where nothing can be told
};

// A judgement for each row. The speed is that of the estimates (kEstimator) and given wherever both
// sets have one (see Summarize()), also where nothing can be told.
//
// A difference is real where MannWhitney() gives a p below level after Holm()'s correction over all
// rows that can be told, and where ranks and estimates agree on its direction. Asked is whether one
// is slower than the other made slower by the row's least difference: times of one sitting know
// nothing of how far sittings lie apart. With ties the normal
// distribution promises small samples more than they hold, so no p counts as below the
// SmallestReachable() of its sizes.
//
// Too few repeats has a row that no difference could make pass as the first of Holm's steps: its
// SmallestReachable(), times the number of comparable rows that need no more repeats than it has,
// is level or above. Rows left out so do not count in the correction. As sizes alone decide that,
// before any time is looked at, the level stays what it is. With 6 repeats on both sides, whose
// smallest p is 0.00216, up to 23 rows can be told, and none of 24; 7 repeats do for 85 rows, 8 for
// 321. A complete run has 27 tests: at one processor count it asks for 7 repeats, at four (108
// rows) for 8. A set without times or with one that is none counts as empty.
[[nodiscard]] std::vector<Judgement> Judge(const std::vector<Row>& rows, double level = kLevel);

} // namespace statistics
