// In which order the inputs are tuned anew so that a running placement becomes another with as little as
// possible off the air, and what each step interrupts. Some hundreds of inputs and some thousands of
// services.

#ifndef RECALCULO_CHANGE_ORDER_H
#define RECALCULO_CHANGE_ORDER_H

#include "placement/change/comparison.h"

namespace zarven::tool {

/// Tunes each changed input of a comparison once, and breaks no limit of an output or a PID budget on the
/// way: what is lost goes before the first step, what is gained comes after the last. A service that moves
/// stays where it is until its input is tuned anew, and goes to its new place as soon as an input there
/// receives it and there is room; meanwhile it is off the air. Those that wait for each other's room go over
/// with the last step.
ChangeOrder change_order(const Comparison& comparison, const Result& before, const Result& after);

} // namespace zarven::tool

#endif
