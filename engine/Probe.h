// A fixed loop of high throughput that tells at which speed the core is at the moment: half of its
// units are another's while the core's other hardware thread works, also where a virtual machine
// hides that thread, and all are slower while the clock is held down.
#pragma once

// Seconds that the loop takes: the shortest of a few rounds, so that an interrupt does not count.
// Costs about 0.1 ms of the calling thread's processor. What it does not notice is a program that
// has the same hardware thread in turn: see ThreadMoment.
[[nodiscard]] double ProbeSeconds();

// Probes until the core has woken up and its clock is steady, a fifth of a second at most.
void WaitForSteadyClock();
