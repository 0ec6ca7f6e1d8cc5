#pragma once

// The windowed application: runs the event loop until the user quits.
int runApplication(int& argc, char** argv);
