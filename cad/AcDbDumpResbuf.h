// One result buffer as a LISP-style dotted pair, for tracing what the host hands over.
#pragma once

#include "sdk/ResultBuffer.h"

#include <string>

// Writes the line for `rb` into `text` ("(10 . 1.000 2.000 3.000)\n", "(8 . \"0\")\n", ...) and answers its
// type code. The value kind follows from the code the way drawing group codes are laid out (strings,
// points, reals, 16-bit integers, entity names); codes above 5000 are the host's own result types.
// A null rb answers RTNONE (5000); codes whose value cannot be shown (below -2, host result types other
// than real, short, string and 3D point) leave `text` untouched.
int AcDbDumpResbuf(std::wstring& text, const resbuf* rb);
