#pragma once

namespace vetlo::testing {

// From now on the store's engine changes files as long as it has made fewer changes than so many:
// in place of that one, counted from 1, this process kills itself. Every write, cut and removal
// counts as a change. For a forked child, called once.
void KillAtChange(int change);

}  // namespace vetlo::testing
