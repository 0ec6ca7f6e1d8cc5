#include "ExportFixtures.h"

#include "Fixtures.h"

#include <QFile>
#include <stdexcept>

namespace ExportFixtures {

namespace {

const QString toneSource = "aevalsrc='0.5*sin(2*PI*t*(if(lt(t,1),200,if(lt(t,2.5),500,"
                           "if(lt(t,4),300,if(lt(t,6),1000,700))))))':s=48000:d=8";

QString subtitles()
{
    return Fixtures::writeOnce("export-subtitles.srt",
                               "1\n00:00:01,000 --> 00:00:03,000\nHello\n\n2\n"
                               "00:00:04,000 --> 00:00:06,000\nAgain\n");
}

} // namespace

QString tones()
{
    return Fixtures::makeWithFfmpeg(
        "export-tones.m4a", {"-f", "lavfi", "-i", toneSource, "-c:a", "aac", "-b:a", "192k",
                             "-metadata", "title=Tones", "-metadata", "artist=Hushpane Tests"});
}

QString toneWithChannels(int channels, int rate, const QString& extension)
{
    const QString name = QString("export-tone-%1ch-%2.%3").arg(channels).arg(rate).arg(extension);
    QStringList arguments = {"-f",  "lavfi",
                             "-i",  QString("sine=f=440:d=2:sample_rate=%1").arg(rate),
                             "-ac", QString::number(channels)};
    arguments << "-c:a" << (extension == "wav" ? "pcm_s16le" : "aac");
    return Fixtures::makeWithFfmpeg(name, arguments);
}

QString richVideo()
{
    const QString plain = Fixtures::makeWithFfmpeg(
        "export-rich-unrotated.mp4",
        Fixtures::args("-f lavfi -i testsrc2=s=320x240:r=25:d=8 -f lavfi -i")
            << toneSource << Fixtures::args("-f lavfi -i sine=f=3000:d=8:sample_rate=44100 -i")
            << subtitles()
            << Fixtures::args("-map 0:v -map 1:a -map 2:a -map 3:s -c:v libx264 -preset veryfast "
                              "-crf 30 -g 25 -pix_fmt yuv420p -color_primaries smpte170m "
                              "-color_trc smpte170m -colorspace smpte170m -c:a aac -b:a 96k "
                              "-c:s mov_text -metadata")
            << "title=Rich Video"
            << "-metadata"
            << "artist=Hushpane Tests");
    // This ffmpeg turns a rotate tag into a display matrix only when copying, and drops
    // the creation time when it copies.
    return Fixtures::makeWithFfmpeg(
        "export-rich.mp4", QStringList{"-i", plain} +
                               Fixtures::args("-map 0 -c copy -metadata:s:v:0 rotate=90 -metadata "
                                              "creation_time=2020-01-02T03:04:05Z"));
}

QString flash()
{
    return Fixtures::makeWithFfmpeg(
        "export-flash.mp4",
        Fixtures::args("-f lavfi -i color=c=black:s=160x120:r=25:d=8,drawbox=x=0:y=0:w=iw:h=ih:"
                       "color=white:t=fill:enable='between(t,5,5.19)' -f lavfi -i "
                       "aevalsrc='if(between(t,5,5.2),0.8*sin(2*PI*1000*t),0)':s=48000:d=8 "
                       "-c:v libx264 -preset veryfast -g 25 -pix_fmt yuv420p -c:a aac -b:a 96k"));
}

QString proresMovie()
{
    return Fixtures::makeWithFfmpeg(
        "export-prores.mov",
        Fixtures::args("-f lavfi -i testsrc2=s=160x120:r=25:d=2 -f lavfi -i "
                       "sine=f=440:d=2:sample_rate=48000 -c:v prores_ks -c:a pcm_s16le"));
}

QString h264WithPcm()
{
    return Fixtures::makeWithFfmpeg(
        "export-h264-pcm.mov",
        Fixtures::args("-f lavfi -i testsrc2=s=160x120:r=25:d=4 -f lavfi -i "
                       "sine=f=440:d=4:sample_rate=48000 -c:v libx264 -preset veryfast -g 25 "
                       "-pix_fmt yuv420p -c:a pcm_s16le"));
}

QString oddSizedVideo()
{
    return Fixtures::makeWithFfmpeg(
        "export-odd.mp4",
        Fixtures::args("-f lavfi -i testsrc2=s=161x121:r=25:d=2 -f lavfi -i "
                       "sine=f=440:d=2:sample_rate=48000 -c:v libx264 -preset veryfast "
                       "-pix_fmt yuv444p -c:a aac"));
}

QString twoSoundTracks()
{
    return Fixtures::makeWithFfmpeg("export-two-tracks.m4a",
                                    {"-f", "lavfi", "-i", "sine=f=440:d=2:sample_rate=48000", "-f",
                                     "lavfi", "-i", "sine=f=1000:d=2:sample_rate=48000", "-map",
                                     "0:a", "-map", "1:a", "-c:a", "aac"});
}

QString silentVideo()
{
    return Fixtures::makeWithFfmpeg("export-silent.mp4",
                                    {"-f", "lavfi", "-i", "testsrc2=s=160x120:r=25:d=2", "-c:v",
                                     "libx264", "-preset", "veryfast", "-pix_fmt", "yuv420p"});
}

QString longVideo()
{
    return Fixtures::makeWithFfmpeg(
        "export-long.mp4", {"-f", "lavfi", "-i", "testsrc2=s=640x360:r=25:d=20", "-f", "lavfi",
                            "-i", "sine=f=440:d=20:sample_rate=48000", "-c:v", "libx264", "-preset",
                            "ultrafast", "-pix_fmt", "yuv420p", "-c:a", "aac"});
}

namespace {

QStringList testPicture(const QString& videoCodec, const QStringList& videoOptions,
                        const QString& soundCodec)
{
    return QStringList{"-f",   "lavfi",   "-i", "testsrc2=s=320x240:r=25:d=8",
                       "-f",   "lavfi",   "-i", toneSource,
                       "-c:v", videoCodec}
           << videoOptions << QStringList{"-pix_fmt", "yuv420p", "-c:a", soundCodec};
}

} // namespace

QString h264Matroska()
{
    return Fixtures::makeWithFfmpeg(
        "export-bframes.mkv",
        testPicture("libx264", {"-preset", "veryfast", "-bf", "3", "-g", "50"}, "aac"));
}

QString h264OpenGop()
{
    return Fixtures::makeWithFfmpeg(
        "export-open-gop.mp4",
        testPicture("libx264",
                    {"-preset", "veryfast", "-bf", "3", "-g", "25", "-x264-params", "open-gop=1"},
                    "aac"));
}

QString hevcMatroska()
{
    return Fixtures::makeWithFfmpeg(
        "export-hevc.mkv",
        testPicture("libx265",
                    {"-preset", "ultrafast", "-g", "25", "-x265-params", "log-level=error"},
                    "aac"));
}

QString vp9Webm()
{
    return Fixtures::makeWithFfmpeg(
        "export-vp9.webm",
        testPicture("libvpx-vp9", {"-deadline", "realtime", "-cpu-used", "8", "-g", "25"},
                    "libopus"));
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
