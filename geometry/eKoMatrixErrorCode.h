#pragma once

// Faults of the vector and matrix classes. A programming fault (bad index, incompatible dimensions) is
// thrown as the enumeration value itself, so callers catch `eKoMatrixErrorCode` by value. Numerical
// failures (a singular matrix) are never thrown; the routines report them by their return value.
//
// Several codes share a text or have none, and some are never raised (6, 7, 21, 22): subtraction reports
// the addition text, row operations all raise the SwapLines code. Existing callers and log parsers rely on
// exactly these values and texts, so they stay as they are.
enum eKoMatrixErrorCode : int {
  eKoVectorSetElemIndex = 0,
  eKoVectorGetElemIndex = 1,
  eKoVectorIndex = 2,
  eKoVectorAssignDimension = 3,
  eKoVectorCrossNot3D = 4,
  eKoVectorAddDimension = 5,     // raised by +, +=, - and -=
  eKoVectorSubDimension = 6,     // never raised
  eKoVectorMatrixDimension = 7,  // never raised
  eKoVectorDotDimension = 8,
  eKoMatrixSetElemIndex = 9,
  eKoMatrixGetElemIndex = 10,
  eKoMatrixIndex = 11,
  eKoMatrixIdentityNotSquare = 12,
  eKoMatrixAssignDimension = 13,
  eKoMatrixVectorDimension = 14,
  eKoMatrixMatrixDimension = 15,
  eKoMatrixAddDimension = 16,
  eKoMatrixSubDimension = 17,
  eKoMatrixInvertNotSquare = 18,
  eKoMatrixSwapLinesIndex = 19,  // also raised by AddLines and MultLine
  eKoMatrixDeterminant3Size = 20,
  eKoMatrixAddLinesIndex = 21,   // never raised
  eKoMatrixMultLineIndex = 22,   // never raised
};

// The message of a code; unknown codes and codes without a text of their own give
// "KoVector / KoMatrix Error".
const char* KoMatrixErrorText(eKoMatrixErrorCode code);

// Throws `code`. Kept out of line so that the range checks in the inline accessors stay small.
[[noreturn]] void KoThrowMatrixError(eKoMatrixErrorCode code);
