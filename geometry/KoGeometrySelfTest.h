#pragma once

#include "geometry/KoBoundingBox.h"

// Exercises the overlap tests of the bounding boxes and writes one line per check; each line states the
// expected results in its text and the computed ones as 0/1 after it, so a reader can compare them at a
// glance. Returns true when every computed result matches its expectation.
bool Selftest_Ko3d(const KoTextSink& sink);
