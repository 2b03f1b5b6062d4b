// Editor services of the host: command-line output, alerts, prompts for points, keywords and numbers,
// system variables, coordinate system conversion and the LISP function table.
//
// Prompts answer the host's result codes (sdk/ResultCodes.h): RTNORM for an answer, RTKWORD for an armed
// keyword (read it with acedGetInput), RTNONE for an empty answer, RTCAN for Escape.
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcRx.h"
#include "sdk/ResultBuffer.h"
#include "sdk/ResultCodes.h"

#include <cstddef>

// Flags of acedInitGet; they hold for the next prompt only, as do the keywords.
constexpr int RSG_NONULL = 0x0001;  // an empty answer is refused
constexpr int RSG_NOZERO = 0x0002;  // zero is refused
constexpr int RSG_NONEG = 0x0004;   // negative numbers are refused
constexpr int RSG_OTHER = 0x0080;   // any other text is answered as a keyword

// Coordinate system codes of acedTrans (RTSHORT result buffers).
constexpr short kWorldCS = 0;
constexpr short kUserCS = 1;
constexpr short kDisplayCS = 2;

// The size of the buffers acedGetInput and acedGetKword fill when no size is given.
constexpr std::size_t kAcedInputBufferSize = 133;

// Writes to the command line. The format is a wide printf format as on the host's home platform:
// %s and %c take wide strings and characters, %hs and %S narrow ones. Answers the characters written.
ACRX_PORT int acutPrintf(const ACHAR* format, ...);

// Shows a message the user has to acknowledge.
ACRX_PORT int acedAlert(const ACHAR* message);

// Arms the next prompt: flags (RSG_*) and keywords. Keywords are separated by blanks; "local _ global"
// gives each keyword a displayed local name and a language-independent global name, in the same order.
ACRX_PORT int acedInitGet(int flags, const ACHAR* keywordList);

// Asks for a point, typed as x,y or x,y,z. basePoint may be null.
ACRX_PORT int acedGetPoint(const ads_point basePoint, const ACHAR* prompt, ads_point result);
// The keyword that answered the last prompt (its global name), or the text an RSG_OTHER prompt took.
ACRX_PORT int acedGetInput(ACHAR* buffer, std::size_t bufferSize);
ACRX_PORT int acedGetInput(ACHAR* buffer);
// Asks for one of the armed keywords; answers its global name.
ACRX_PORT int acedGetKword(const ACHAR* prompt, ACHAR* buffer, std::size_t bufferSize);
ACRX_PORT int acedGetKword(const ACHAR* prompt, ACHAR* buffer);
ACRX_PORT int acedGetReal(const ACHAR* prompt, ads_real* result);

// Reads a system variable; strings come back in memory the caller frees with acutDelString (or free).
ACRX_PORT int acedGetVar(const ACHAR* name, resbuf* result);

// Converts a point (disp = 0) or a displacement (disp != 0) between coordinate systems given as RTSHORT
// result buffers. This host's user and display systems coincide with the world system.
ACRX_PORT int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int disp,
                        ads_point result);

// LISP functions: a module defines names with function codes when a drawing is loaded and is asked to
// run one with the invoke message, reading the code with acedGetFunCode; acedRegFunc lets the host call
// the function directly instead.
ACRX_PORT int acedDefun(const ACHAR* name, int functionCode);
ACRX_PORT int acedUndef(const ACHAR* name, int functionCode);
ACRX_PORT int acedRegFunc(int (*function)(), int functionCode);
ACRX_PORT int acedGetFunCode();

ACRX_PORT resbuf* acutNewRb(int type);
ACRX_PORT int acutRelRb(resbuf* chain);
ACRX_PORT ACHAR* acutNewString(const ACHAR* text);
ACRX_PORT void acutDelString(ACHAR*& text);
