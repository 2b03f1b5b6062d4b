#pragma once
// Identifiers of the point fields in the table form and in the coordinate list columns.
// A field mask is an array of them ended by 0 (or by the array's length).

enum eKoPointRWMask : int {
    eKoRWEnd = 0,
    eKoRWNumber = 1,     // "#"
    eKoRWName = 2,       // "Name", quoted
    eKoRWFlag = 3,       // "Flag"
    eKoRWCodeText = 4,   // "Code" as "  0" ... "123"
    eKoRWCode = 5,       // "Code" as a number
    eKoRWPP = 6,         // "PP": the name without quotes
    eKoRWPhoto = 7,
    eKoRWCamera = 8,
    eKoRWX = 9,
    eKoRWY = 10,
    eKoRWZ = 11,
    eKoRWDx = 12,
    eKoRWDy = 13,
    eKoRWDz = 14,
    eKoRWDS = 15,        // length of (dx, dy, dz), written only
    eKoRWRedu = 16,
    eKoRWRedu2 = 17,
    eKoRWRedu3 = 18,
    eKoRWColor = 19,
    eKoRWSkip = 20,      // writes nothing, reads past one item
    eKoRWSx = 105,       // same storage as dx, dy, dz
    eKoRWSy = 106,
    eKoRWSz = 107,
    eKoRWStatus = 108,   // list columns only
    eKoRWMark = 109,
    eKoRWMark2 = 110,
    eKoRWActive = 111,   // flag bit value 2
    eKoRWAccepted = 112, // flag bit value 4
    eKoRWCancel = 113,   // flag bit value 8
    eKoRWMedian = 114,   // flag bit value 16
    eKoRWResidualX = 116,  // same storage as redu, redu2, redu3, written only
    eKoRWResidualY = 117,
    eKoRWResidualZ = 118,
};
