#pragma once

// Runs the built-in checks; returns the process exit status (0 all passed, 1 any failed).
int runSelfTest();
