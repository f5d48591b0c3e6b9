// The work of the integer and memory groups as anybody would write it down, without the program's
// own classes: what a group's rate is held against.
#pragma once

namespace bare {

void CopyText(long rounds);
void CompareText(long rounds);
void AllocateAndClear(long rounds);
void EvaluateAckerman(long rounds);
// Returns the number of passes begun before that many seconds were over.
long SievePasses(double seconds);

} // namespace bare
