#include "geometry/eKoMatrixErrorCode.h"

const char* KoMatrixErrorText(eKoMatrixErrorCode code)
{
  switch (code) {
    case eKoVectorSetElemIndex: return "KoVector::SetElem()  : index error.";
    case eKoVectorGetElemIndex: return "KoVector::GetElem()  : index error.";
    case eKoVectorIndex: return "KoVector::operator []: index error.";
    case eKoVectorAssignDimension: return "KoVector::operator = : different dimensions.";
    case eKoVectorCrossNot3D: return "KoVector::operator % : only for 3D vectors.";
    case eKoVectorAddDimension: return "KoVector::operator + : different dimensions.";
    case eKoVectorSubDimension: return "KoVector::operator - : different dimensions.";
    case eKoVectorMatrixDimension: return "KoVector::operator * (KoMatrix) : incomp. dimensions.";
    case eKoVectorDotDimension: return "KoVector::operator * (KoVector) : incomp. dimensions.";
    case eKoMatrixSetElemIndex: return "KoMatrix::SetElem()  : index error.";
    case eKoMatrixGetElemIndex: return "KoMatrix::GetElem()  : index error.";
    case eKoMatrixIndex: return "KoMatrix::operator []: index error.";
    case eKoMatrixAssignDimension: return "KoMatrix::operator = : incomp. dimensions.";
    case eKoMatrixVectorDimension: return "KoMatrix::operator * KoVector : incomp. dimensions.";
    case eKoMatrixMatrixDimension: return "KoMatrix::operator * KoMatrix : incomp. dimensions.";
    case eKoMatrixAddDimension: return "KoMatrix::operator + KoMatrix : incompatible dimensions.";
    case eKoMatrixInvertNotSquare: return "KoMatrix::Invert()   : Matrix is not quadr.";
    case eKoMatrixSwapLinesIndex: return "KoMatrix::SwapLines(): index error.";
    case eKoMatrixDeterminant3Size: return "KoMatrix::SwapLines(): index error.";
    case eKoMatrixAddLinesIndex: return "KoMatrix::AddLines() : index error.";
    case eKoMatrixMultLineIndex: return "KoMatrix::MultLine() : index error.";
    default: return "KoVector / KoMatrix Error";
  }
}

void KoThrowMatrixError(eKoMatrixErrorCode code)
{
  throw code;
}
