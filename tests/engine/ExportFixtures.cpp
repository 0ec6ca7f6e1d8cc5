#include "ExportFixtures.h"

#include "Fixtures.h"

#include <stdexcept>

namespace ExportFixtures {

namespace {

const QString toneSource = "aevalsrc='0.5*sin(2*PI*t*(if(lt(t,1),200,if(lt(t,2.5),500,"
                           "if(lt(t,4),300,if(lt(t,6),1000,700))))))':s=48000:d=8";

// 8 s of 320x240 at 25 fps with the tone as first sound track.
QStringList testPicture(const QString& videoCodec, const QStringList& videoOptions,
                        const QString& soundCodec)
{
    return QStringList{"-f",   "lavfi",   "-i", "testsrc2=s=320x240:r=25:d=8",
                       "-f",   "lavfi",   "-i", toneSource,
                       "-c:v", videoCodec}
           << videoOptions << QStringList{"-pix_fmt", "yuv420p", "-c:a", soundCodec};
}

// The ffmpeg arguments each fixture is made from.
QStringList recipe(const QString& file)
{
    // 8 s of the tone, mono 48 kHz AAC, titled "Tones" by "Hushpane Tests".
    if (file == "tones.m4a")
        return {"-f",   "lavfi", "-i",        toneSource,    "-c:a",      "aac",
                "-b:a", "192k",  "-metadata", "title=Tones", "-metadata", "artist=Hushpane Tests"};
    // rich.mp4 is 8 s of 320x240 H.264 at 25 fps (a keyframe every second, B-frames) with the
    // tone as first sound track, a second sound track, a subtitle track, rotation 90, colour
    // tags (SMPTE 170M) and title, artist and creation time. This ffmpeg turns a rotate tag
    // into a display matrix only when copying, and drops the creation time when it copies.
    if (file == "rich-unrotated.mp4")
        return Fixtures::args("-f lavfi -i testsrc2=s=320x240:r=25:d=8 -f lavfi -i")
               << toneSource << Fixtures::args("-f lavfi -i sine=f=3000:d=8:sample_rate=44100 -i")
               << Fixtures::writeOnce("export-subtitles.srt",
                                      "1\n00:00:01,000 --> 00:00:03,000\nHello\n\n2\n"
                                      "00:00:04,000 --> 00:00:06,000\nAgain\n")
               << Fixtures::args("-map 0:v -map 1:a -map 2:a -map 3:s -c:v libx264 -preset "
                                 "veryfast -crf 30 -g 25 -pix_fmt yuv420p -color_primaries "
                                 "smpte170m -color_trc smpte170m -colorspace smpte170m -c:a aac "
                                 "-b:a 96k -c:s mov_text -metadata")
               << "title=Rich Video"
               << "-metadata"
               << "artist=Hushpane Tests";
    if (file == "rich.mp4")
        return QStringList{"-i", media("rich-unrotated.mp4")} +
               Fixtures::args("-map 0 -c copy -metadata:s:v:0 rotate=90 -metadata "
                              "creation_time=2020-01-02T03:04:05Z");
    // 8 s of black 160x120 H.264 with a white flash and a beep together from 5.0 to 5.2 s.
    if (file == "flash.mp4")
        return Fixtures::args(
            "-f lavfi -i color=c=black:s=160x120:r=25:d=8,drawbox=x=0:y=0:w=iw:h=ih:"
            "color=white:t=fill:enable='between(t,5,5.19)' -f lavfi -i "
            "aevalsrc='if(between(t,5,5.2),0.8*sin(2*PI*1000*t),0)':s=48000:d=8 "
            "-c:v libx264 -preset veryfast -g 25 -pix_fmt yuv420p -c:a aac -b:a 96k");
    // 2 s of ProRes with PCM sound in a .mov.
    if (file == "prores.mov")
        return Fixtures::args("-f lavfi -i testsrc2=s=160x120:r=25:d=2 -f lavfi -i "
                              "sine=f=440:d=2:sample_rate=48000 -c:v prores_ks -c:a pcm_s16le");
    // 4 s of H.264 with PCM sound in a .mov: the sound cannot go into an .mp4 as it is.
    if (file == "h264-pcm.mov")
        return Fixtures::args("-f lavfi -i testsrc2=s=160x120:r=25:d=4 -f lavfi -i "
                              "sine=f=440:d=4:sample_rate=48000 -c:v libx264 -preset veryfast "
                              "-g 25 -pix_fmt yuv420p -c:a pcm_s16le");
    // 2 s of 161x121 H.264 (odd sizes) with sound.
    if (file == "odd.mp4")
        return Fixtures::args("-f lavfi -i testsrc2=s=161x121:r=25:d=2 -f lavfi -i "
                              "sine=f=440:d=2:sample_rate=48000 -c:v libx264 -preset veryfast "
                              "-pix_fmt yuv444p -c:a aac");
    // 2 s of sound with two tracks: 440 Hz first, 1000 Hz second.
    if (file == "two-tracks.m4a")
        return Fixtures::args("-f lavfi -i sine=f=440:d=2:sample_rate=48000 -f lavfi -i "
                              "sine=f=1000:d=2:sample_rate=48000 -map 0:a -map 1:a -c:a aac");
    // 2 s of H.264 without sound.
    if (file == "silent.mp4")
        return Fixtures::args("-f lavfi -i testsrc2=s=160x120:r=25:d=2 -c:v libx264 -preset "
                              "veryfast -pix_fmt yuv420p");
    // 20 s of 640x360 H.264 with sound: long enough to be cancelled midway.
    if (file == "long.mp4")
        return Fixtures::args("-f lavfi -i testsrc2=s=640x360:r=25:d=20 -f lavfi -i "
                              "sine=f=440:d=20:sample_rate=48000 -c:v libx264 -preset ultrafast "
                              "-pix_fmt yuv420p -c:a aac");
    // The tone with 8 s of pictures, a keyframe every `-g` pictures: H.264 with B-frames in
    // Matroska (no decode times stored), as screen recorders write it; H.264 with open GOPs
    // (only the first keyframe an IDR, the others recovery points); HEVC from x265 (open
    // GOPs, CRA pictures) in Matroska; VP9 with Opus sound in WebM.
    if (file == "bframes.mkv")
        return testPicture("libx264", {"-preset", "veryfast", "-bf", "3", "-g", "50"}, "aac");
    if (file == "open-gop.mp4")
        return testPicture(
            "libx264",
            {"-preset", "veryfast", "-bf", "3", "-g", "25", "-x264-params", "open-gop=1"}, "aac");
    if (file == "hevc.mkv")
        return testPicture("libx265",
                           {"-preset", "ultrafast", "-g", "25", "-x265-params", "log-level=error"},
                           "aac");
    if (file == "vp9.webm")
        return testPicture("libvpx-vp9", {"-deadline", "realtime", "-cpu-used", "8", "-g", "25"},
                           "libopus");
    throw std::invalid_argument("no fixture " + file.toStdString());
}

} // namespace

QString media(const QString& file)
{
    return Fixtures::makeWithFfmpeg("export-" + file, recipe(file));
}

QString toneWithChannels(int channels, int rate, const QString& extension)
{
    return Fixtures::makeWithFfmpeg(
        QString("export-tone-%1ch-%2.%3").arg(channels).arg(rate).arg(extension),
        Fixtures::args(QString("-f lavfi -i sine=f=440:d=2:sample_rate=%1 -ac %2 -c:a %3")
                           .arg(rate)
                           .arg(channels)
                           .arg(extension == "wav" ? "pcm_s16le" : "aac")));
}

Analysis analysis(std::vector<Segment> keeps, double duration, bool hasVideo,
                  OutputContainer container)
{
    Analysis result;
    result.duration = duration;
    result.keeps = std::move(keeps);
    result.hasVideo = hasVideo;
    result.outputFileType = container;
    result.outputExtension = container == OutputContainer::AppleM4A ? "m4a"
                             : container == OutputContainer::MPEG4  ? "mp4"
                                                                    : "mov";
    return result;
}

} // namespace ExportFixtures
