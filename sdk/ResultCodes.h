// Result codes of the host's editor functions and the value types of result buffers.
#pragma once

constexpr int RTNONE = 5000;   // no result (empty answer where one is allowed)
constexpr int RTNORM = 5100;   // the request succeeded
constexpr int RTERROR = -5001;
constexpr int RTCAN = -5002;   // the user pressed Escape
constexpr int RTREJ = -5003;   // the request was rejected as invalid
constexpr int RTFAIL = -5004;
constexpr int RTKWORD = -5005; // the user typed one of the armed keywords

// Result buffer value types (above 5000; lower codes are drawing group codes).
constexpr short RTREAL = 5001;
constexpr short RTPOINT = 5002;
constexpr short RTSHORT = 5003;
constexpr short RTANG = 5004;
constexpr short RTSTR = 5005;
constexpr short RTENAME = 5006;
constexpr short RTPICKS = 5007;
constexpr short RTORINT = 5008;
constexpr short RT3DPOINT = 5009;
constexpr short RTLONG = 5010;
