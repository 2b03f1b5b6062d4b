// Running a measured program in a process of its own, so that its peak memory is its own and nothing the
// benchmark holds is counted.
#pragma once

#include <sys/resource.h>

#include <string>
#include <vector>

namespace bench {

// Runs a program (argv[0] is its path) with `extraEnv` added to this process's environment; returns its
// exit status (-1 when it could not start or did not exit) and what it printed on stdout and stderr.
// `usage` gets its resource figures (ru_maxrss is the peak resident memory in KiB).
int runProgram(std::vector<std::string> args, std::string& output, const std::vector<std::string>& extraEnv = {},
               rusage* usage = nullptr);

double cpuSeconds(const rusage& usage);

// The peak resident memory of this process's own image, in bytes (0 when it cannot be read). Unlike the
// ru_maxrss that wait4 reports, it does not count what the parent held when the child was spawned: the
// memory of the process before its exec is left out.
double ownPeakBytes();
double processCpuNow();  // processor seconds this process has used so far

}  // namespace bench
