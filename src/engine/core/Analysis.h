#pragma once

#include "Segment.h"

#include <QString>
#include <vector>

// The container an export writes.
enum class OutputContainer { AppleM4A, MPEG4, QuickTimeMovie };

// Everything the engine learned about one file.
struct Analysis {
    double duration = 0.0;
    std::vector<Segment> silences;
    std::vector<Segment> keeps;
    std::vector<float> levels; // RMS of the mono mix per window, linear amplitude
    double levelWindow = 0.05;
    bool hasVideo = false;
    OutputContainer outputFileType = OutputContainer::AppleM4A;
    QString outputExtension = QStringLiteral("m4a");

    // Seconds of the kept spans, summed in list order.
    double keptSeconds() const;
    // duration minus the kept seconds, never below zero.
    double removedSeconds() const;
};
