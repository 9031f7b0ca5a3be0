// What GNUstep's notification centre keeps of a delivery that an exception leaves.
#pragma once

/// Whether it keeps the observer for good. Base 1.31 does, 1.28 does not.
bool CenterKeepsThrowingObservers();
