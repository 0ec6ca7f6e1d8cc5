#include "Recordings.h"

#include "Fixtures.h"

namespace Recordings {

QString speechWithPauses()
{
    const QString first =
        Fixtures::makeSpeech("speech-1.wav", "The first part of the talk starts here.");
    const QString second =
        Fixtures::makeSpeech("speech-2.wav", "After a long pause the speaker goes on.");
    const QString third = Fixtures::makeSpeech("speech-3.wav", "And that is the end of the story.");
    const QStringList gap = Fixtures::args("-f lavfi -i anullsrc=r=22050:cl=mono:d=1.5");
    return Fixtures::makeWithFfmpeg(
        "speech-pauses.wav",
        QStringList{"-i", first} + gap + QStringList{"-i", second} + gap +
            QStringList{"-i", third} +
            Fixtures::args(
                "-filter_complex [0:a][1:a][2:a][3:a][4:a]concat=n=5:v=0:a=1 -ar 22050 -ac 1 "
                "-c:a pcm_s16le"));
}

QString toneWithGaps()
{
    return Fixtures::makeWithFfmpeg(
        "tone-gaps.wav",
        Fixtures::args(
            "-f lavfi -i "
            "aevalsrc='0.5*sin(2*PI*440*t)*(gte(t,1)*lt(t,4)+gte(t,6)*lt(t,9))':s=16000:d=30 "
            "-c:a pcm_s16le"));
}

QString steadyTone()
{
    return Fixtures::makeWithFfmpeg(
        "steady-tone.wav",
        Fixtures::args(
            "-f lavfi -i sine=frequency=440:sample_rate=16000:duration=3 -c:a pcm_s16le"));
}

QString longVideo()
{
    return Fixtures::makeWithFfmpeg(
        "long-video.mp4",
        Fixtures::args("-f lavfi -i testsrc2=size=640x360:rate=25:duration=40 -f lavfi -i "
                       "aevalsrc=0.3*sin(2*PI*440*t)*lt(mod(t\\,4)\\,2):s=44100:d=40 -c:v libx264 "
                       "-preset ultrafast -pix_fmt yuv420p -c:a aac -shortest"));
}

QString videoWithoutSound()
{
    return Fixtures::makeWithFfmpeg(
        "mute-video.mp4",
        Fixtures::args("-f lavfi -i testsrc2=size=160x120:rate=10 -t 2 -c:v libx264 "
                       "-pix_fmt yuv420p"));
}

QString brokenFile()
{
    return Fixtures::writeOnce("broken.wav", QByteArray("this is not a recording\n").repeated(64));
}

} // namespace Recordings
