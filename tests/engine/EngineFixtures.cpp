#include "EngineFixtures.h"

#include "Fixtures.h"

#include <QByteArray>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>

namespace EngineFixtures {

namespace {

// The names carry a prefix of their own: fixtures of every test program share one folder.
QString name(const QString& base)
{
    return QStringLiteral("engine-") + base;
}

QString make(const QString& base, const QStringList& arguments)
{
    return Fixtures::makeWithFfmpeg(name(base), arguments);
}

// A lavfi tone of amplitude 0.5; `gate` multiplies it (1 for a steady tone). Commas in the
// gate are escaped: the source is a filter graph.
QStringList toneSource(int rate, double seconds, const QString& gate = QStringLiteral("1"))
{
    return {"-f", "lavfi", "-i",
            QStringLiteral("aevalsrc=0.5*sin(2*PI*440*t)*(%1):s=%2:d=%3")
                .arg(gate)
                .arg(rate)
                .arg(seconds)};
}

QStringList silenceSource(int rate, double seconds)
{
    return {"-f", "lavfi", "-i",
            QStringLiteral("anullsrc=r=%1:cl=mono:d=%2").arg(rate).arg(seconds)};
}

QStringList pictureSource(double seconds)
{
    return {"-f", "lavfi", "-i", QStringLiteral("testsrc2=s=160x120:r=25:d=%1").arg(seconds)};
}

const QStringList fastH264 = {"-c:v", "libx264", "-preset", "ultrafast", "-pix_fmt", "yuv420p"};

QString writeOnce(const QString& base, const QByteArray& bytes)
{
    return Fixtures::writeOnce(name(base), bytes);
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + path.toStdString());
    return file.readAll();
}

// A QuickTime movie of two 16-bit PCM sound tracks, one from each input.
QString twoPcmTracks(const QString& base, const QStringList& inputs)
{
    return make(base, inputs + QStringList{"-map", "0", "-map", "1", "-c:a", "pcm_s16le"});
}

// `movie` with its first sample description, 'sowt' (little-endian 16-bit PCM), renamed to
// 'qqzz', which no decoder knows.
QString withUnknownCodec(const QString& movie, const QString& base)
{
    QByteArray bytes = readAll(movie);
    const qsizetype at = bytes.indexOf("sowt");
    if (at < 0)
        throw std::runtime_error("no sample description in " + movie.toStdString());
    return writeOnce(base, bytes.replace(at, 4, "qqzz"));
}

// The first half of 2 s of picture and tone in an MP4.
QString firstHalf(const QString& base, const QStringList& options)
{
    const QByteArray whole = readAll(
        make("whole-" + base, pictureSource(2) + toneSource(48000, 2) + fastH264 + options));
    return writeOnce(base, whole.left(whole.size() / 2));
}

} // namespace

QString tone()
{
    return make("tone.wav", toneSource(48000, 3));
}

QString silence()
{
    return make("silence.wav", silenceSource(48000, 2));
}

QString toneWithGaps()
{
    return make("tone-gaps.wav",
                toneSource(48000, 8, "not(between(t\\,2\\,3.5))*not(between(t\\,5\\,6))"));
}

QString stereoLeftOnly()
{
    return make("tone-left.wav", {"-i", tone(), "-af", "pan=stereo|c0=c0|c1=0*c0"});
}

QString stereoOpposite()
{
    return make("tone-opposite.wav", {"-i", tone(), "-af", "pan=stereo|c0=c0|c1=-1*c0"});
}

QString twoTracks()
{
    return twoPcmTracks("two-tracks.mov", toneSource(48000, 3) + silenceSource(48000, 3));
}

QString twoTracksUnequal()
{
    return twoPcmTracks("two-tracks-unequal.mov", toneSource(48000, 4) + silenceSource(48000, 2));
}

QString twoTracksLateStart()
{
    return twoPcmTracks("two-tracks-late.mov", toneSource(48000, 3) +
                                                   QStringList{"-itsoffset", "1"} +
                                                   silenceSource(48000, 2));
}

QString mp3WithCover()
{
    const QString cover = make("cover.png", pictureSource(1) + QStringList{"-frames:v", "1"});
    return make("cover.mp3",
                toneSource(44100, 3) + QStringList{"-i", cover, "-map", "0", "-map", "1", "-c:v",
                                                   "png", "-disposition:v", "attached_pic"});
}

QString h264Mp4()
{
    return make("h264.mp4", pictureSource(1) + toneSource(48000, 1) + fastH264);
}

QString hevcMp4()
{
    return make("hevc.mp4", pictureSource(1) + toneSource(48000, 1) +
                                QStringList{"-c:v", "libx265", "-preset", "ultrafast",
                                            "-x265-params", "log-level=error", "-tag:v", "hvc1"});
}

QString proresMov()
{
    return make("prores.mov",
                pictureSource(1) + toneSource(48000, 1) + QStringList{"-c:v", "prores_ks"});
}

QString h264Mov()
{
    return make("h264.mov", pictureSource(1) + toneSource(48000, 1) + fastH264);
}

QString rotatedMp4()
{
    // FFmpeg's "rotate" tag turns counter-clockwise by its value, so 270 is a clockwise quarter.
    return make("rotated.mp4", {"-i", h264Mp4(), "-c", "copy", "-metadata:s:v:0", "rotate=270"});
}

QString soundStartsLate()
{
    return make("sound-starts-late.mov", pictureSource(2) + QStringList{"-itsoffset", "0.5"} +
                                             toneSource(48000, 1.5) + fastH264 +
                                             QStringList{"-c:a", "pcm_s16le"});
}

QString pictureOutlastsSound()
{
    return make("picture-outlasts-sound.mp4", pictureSource(5) + toneSource(48000, 2) + fastH264);
}

QString adtsAac()
{
    return make("estimated.aac", toneSource(44100, 7, "lt(t\\,4)"));
}

Speech speechWithPauses()
{
    const QStringList sentences = {
        QStringLiteral("The quick brown fox jumps over the lazy dog"),
        QStringLiteral("Speech analysis finds the quiet between sentences"),
        QStringLiteral("Then the recording goes on with another long sentence"),
    };
    const std::vector<double> gaps = {1.5, 1.0};
    // espeak-ng leaves some quiet at both ends; trimmed, the pauses are exactly the gaps.
    const QString trim =
        QStringLiteral("silenceremove=start_periods=1:start_threshold=-50dB,areverse,"
                       "silenceremove=start_periods=1:start_threshold=-50dB,areverse");
    QStringList inputs;
    std::vector<double> lengths;
    for (int i = 0; i < sentences.size(); ++i) {
        const QString raw =
            Fixtures::makeSpeech(name(QStringLiteral("sentence-%1.wav").arg(i)), sentences[i]);
        const QString trimmed =
            make(QStringLiteral("sentence-%1-trimmed.wav").arg(i), {"-i", raw, "-af", trim});
        lengths.push_back(Fixtures::probeDuration(trimmed));
        inputs << "-i" << trimmed;
    }
    const QString graph = QStringLiteral("aevalsrc=0:s=22050:d=%1[g0];aevalsrc=0:s=22050:d=%2[g1];"
                                         "[0][g0][1][g1][2]concat=n=5:v=0:a=1")
                              .arg(gaps[0])
                              .arg(gaps[1]);
    Speech speech;
    speech.file = make("speech.m4a", inputs + QStringList{"-filter_complex", graph, "-c:a", "aac"});
    double at = 0.0;
    for (std::size_t i = 0; i < gaps.size(); ++i) {
        at += lengths[i];
        speech.pauseStarts.push_back(at);
        at += gaps[i];
        speech.pauseEnds.push_back(at);
    }
    return speech;
}

QString longTone()
{
    return make("long-tone.wav", toneSource(16000, 600));
}

RealWorld gappedAac()
{
    const QString first =
        make("gap-first.m4a", toneSource(48000, 3, "lt(t\\,2)") + QStringList{"-c:a", "aac"});
    const QString second =
        make("gap-second.m4a", toneSource(48000, 2) + QStringList{"-c:a", "aac"});
    const QString list =
        writeOnce("gap-list.txt",
                  QStringLiteral("file '%1'\nduration 5\nfile '%2'\n").arg(first, second).toUtf8());
    return {make("gapped.m4a", {"-f", "concat", "-safe", "0", "-i", list, "-c", "copy"}), 2.0, 5.0};
}

RealWorld flvStream()
{
    // The sound starts a little after the picture, as when a streaming tool starts capturing
    // it later; the AAC header still goes out at the start.
    return {make("stream.flv", pictureSource(4) + QStringList{"-itsoffset", "0.2"} +
                                   toneSource(44100, 3.8, "not(between(t\\,1.3\\,2.3))") +
                                   fastH264 + QStringList{"-c:a", "aac"}),
            1.5, 2.5};
}

RealWorld liveWebm()
{
    return {make("live.webm", toneSource(48000, 4, "not(between(t\\,1.5\\,2.5))") +
                                  QStringList{"-c:a", "libopus", "-live", "1"}),
            1.5, 2.5};
}

RealWorld liveMatroska()
{
    return {make("live.mkv", toneSource(44100, 4, "not(between(t\\,1.5\\,2.5))") +
                                 QStringList{"-c:a", "aac", "-live", "1"}),
            1.5, 2.5};
}

RealWorld unknownTrackBesideSound()
{
    // The first sample description belongs to the first track.
    const QString movie =
        twoPcmTracks("two-pcm.mov",
                     silenceSource(48000, 4) + toneSource(48000, 4, "not(between(t\\,1.5\\,2.5))"));
    return {withUnknownCodec(movie, "unknown-beside-sound.mov"), 1.5, 2.5};
}

namespace {

// Speech twice over, about 17 s, resampled to `rate` with `channels` channels.
QStringList speechSource(int rate, int channels)
{
    return {"-stream_loop", "1",
            "-i",           speechWithPauses().file,
            "-ar",          QString::number(rate),
            "-ac",          QString::number(channels)};
}

} // namespace

QString speechAac()
{
    return make("speech-long.m4a", speechSource(44100, 2) + QStringList{"-c:a", "aac"});
}

QString speechMp3()
{
    return make("speech-long.mp3", speechSource(44100, 2) + QStringList{"-c:a", "libmp3lame"});
}

QString speechOpus()
{
    return make("speech-long.ogg", speechSource(48000, 2) + QStringList{"-c:a", "libopus"});
}

QString speechPcm8kMono()
{
    return make("speech-long-8k.wav", speechSource(8000, 1));
}

QString speechSixChannels()
{
    return make("speech-long-6ch.flac", speechSource(48000, 6));
}

QString speechTwoTracks()
{
    const QString speech = speechWithPauses().file;
    return make("speech-long-two.mov",
                {"-stream_loop", "1",        "-i",  speech,  "-itsoffset", "1.3",
                 "-stream_loop", "1",        "-i",  speech,  "-map",       "0",
                 "-map",         "1",        "-ar", "48000", "-ac",        "1",
                 "-c:a",         "pcm_s16le"});
}

QString videoWithoutSound()
{
    return make("picture-only.mp4", pictureSource(1) + fastH264);
}

QString zeroDurationWav()
{
    return make("zero.wav", silenceSource(48000, 1) + QStringList{"-t", "0"});
}

QString tinyTone()
{
    return make("tiny-tone.wav", toneSource(48000, 0.03));
}

QString emptyFile()
{
    return writeOnce("empty.mp3", {});
}

QString textNamedMp3()
{
    return writeOnce("text.mp3", "This is a note about the talk, not a recording.\n");
}

QString truncatedMp4()
{
    return firstHalf("truncated.mp4", {});
}

QString truncatedFaststartMp4()
{
    return firstHalf("truncated-faststart.mp4", {"-movflags", "+faststart"});
}

QString soundTrackWithoutSamples()
{
    return make("no-samples.mkv", pictureSource(2) + silenceSource(48000, 2) +
                                      QStringList{"-map", "0", "-map", "1", "-t", "2"} + fastH264 +
                                      QStringList{"-c:a", "pcm_s16le", "-frames:a", "0"});
}

QString unknownSoundCodec()
{
    return withUnknownCodec(
        make("pcm.mov", toneSource(48000, 2) + QStringList{"-c:a", "pcm_s16le"}),
        "unknown-codec.mov");
}

QString hundredChannelWav()
{
    constexpr quint16 channels = 100;
    constexpr quint32 rate = 16000;
    const QByteArray samples(qsizetype(rate) * channels * 2, '\x10'); // 1 s
    QByteArray wav;
    QDataStream out(&wav, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + samples.size());
    out.writeRawData("WAVEfmt ", 8);
    // Integer PCM, then the rate in samples and bytes, the bytes of a frame and of a sample.
    out << quint32(16) << quint16(1) << channels << rate << quint32(rate * channels * 2)
        << quint16(channels * 2) << quint16(16);
    out.writeRawData("data", 4);
    out << quint32(samples.size());
    out.writeRawData(samples.constData(), int(samples.size()));
    return writeOnce("hundred-channels.wav", wav);
}

double decodedSeconds(const QString& path)
{
    return Fixtures::probeDuration(
        Fixtures::makeWithFfmpeg(QFileInfo(path).fileName() + "-decoded.wav", {"-i", path, "-vn"}));
}

} // namespace EngineFixtures
