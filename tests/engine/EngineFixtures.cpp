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

// Maps the first two inputs to two 16-bit PCM sound tracks of a QuickTime movie.
const QStringList twoPcmTracks = {"-map", "0", "-map", "1", "-c:a", "pcm_s16le"};

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

// Three sentences of espeak-ng speech joined by 1.5 s and 1.0 s of digital silence, AAC.
QString speechWithPauses()
{
    QStringList inputs;
    int i = 0;
    for (const char* sentence : {"The quick brown fox jumps over the lazy dog",
                                 "Speech analysis finds the quiet between sentences",
                                 "Then the recording goes on with another long sentence"}) {
        inputs << "-i"
               << Fixtures::makeSpeech(name(QStringLiteral("sentence-%1.wav").arg(i++)), sentence);
    }
    return make("speech-joined.m4a",
                inputs + QStringList{"-filter_complex",
                                     "aevalsrc=0:s=22050:d=1.5[g0];aevalsrc=0:s=22050:d=1[g1];"
                                     "[0][g0][1][g1][2]concat=n=5:v=0:a=1",
                                     "-c:a", "aac"});
}

// Speech twice over, about 17 s, resampled to `rate` with `channels` channels.
QStringList speechSource(int rate, int channels)
{
    return {"-stream_loop", "1",
            "-i",           speechWithPauses(),
            "-ar",          QString::number(rate),
            "-ac",          QString::number(channels)};
}

// A WAV of 100 channels, more than the resampler takes.
QByteArray hundredChannelWav()
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
    return wav;
}

// The ffmpeg arguments each fixture is made from.
QStringList recipe(const QString& file)
{
    // 3 s of tone at 48 kHz; 2 s of digital silence; 8 s of tone, silent from 2 to 3.5 s and
    // from 5 to 6 s; tone.wav in stereo, on the left only and inverted on the right.
    if (file == "tone.wav")
        return toneSource(48000, 3);
    if (file == "silence.wav")
        return silenceSource(48000, 2);
    if (file == "tone-gaps.wav")
        return toneSource(48000, 8, "not(between(t\\,2\\,3.5))*not(between(t\\,5\\,6))");
    if (file == "tone-left.wav")
        return {"-i", media("tone.wav"), "-af", "pan=stereo|c0=c0|c1=0*c0"};
    if (file == "tone-opposite.wav")
        return {"-i", media("tone.wav"), "-af", "pan=stereo|c0=c0|c1=-1*c0"};
    // Two sound tracks: tone 3 s and silence 3 s; tone 4 s and silence 2 s; tone 3 s and
    // silence placed from 1 s to 3 s.
    if (file == "two-tracks.mov")
        return toneSource(48000, 3) + silenceSource(48000, 3) + twoPcmTracks;
    if (file == "two-tracks-unequal.mov")
        return toneSource(48000, 4) + silenceSource(48000, 2) + twoPcmTracks;
    if (file == "two-tracks-late.mov")
        return toneSource(48000, 3) + QStringList{"-itsoffset", "1"} + silenceSource(48000, 2) +
               twoPcmTracks;
    // An MP3 of 3 s of tone with a cover picture.
    if (file == "cover.png")
        return pictureSource(1) + QStringList{"-frames:v", "1"};
    if (file == "cover.mp3")
        return toneSource(44100, 3) +
               QStringList{"-i",  media("cover.png"), "-map",        "0", "-map", "1", "-c:v",
                           "png", "-disposition:v",   "attached_pic"};
    // 1 s of 160x120 picture with tone: H.264 in MP4 and in MOV, HEVC in MP4, ProRes in MOV.
    if (file == "h264.mp4" || file == "h264.mov")
        return pictureSource(1) + toneSource(48000, 1) + fastH264;
    if (file == "hevc.mp4")
        return pictureSource(1) + toneSource(48000, 1) +
               QStringList{"-c:v",         "libx265",         "-preset", "ultrafast",
                           "-x265-params", "log-level=error", "-tag:v",  "hvc1"};
    if (file == "prores.mov")
        return pictureSource(1) + toneSource(48000, 1) + QStringList{"-c:v", "prores_ks"};
    // h264.mp4 with a display matrix that turns the picture a quarter turn clockwise: FFmpeg's
    // "rotate" tag turns counter-clockwise by its value.
    if (file == "rotated.mp4")
        return {"-i", media("h264.mp4"), "-c", "copy", "-metadata:s:v:0", "rotate=270"};
    // 2 s of picture with 1.5 s of tone (16-bit PCM) that starts at 0.5 s; 5 s of picture with
    // 2 s of tone; 1 s of picture alone.
    if (file == "sound-starts-late.mov")
        return pictureSource(2) + QStringList{"-itsoffset", "0.5"} + toneSource(48000, 1.5) +
               fastH264 + QStringList{"-c:a", "pcm_s16le"};
    if (file == "picture-outlasts-sound.mp4")
        return pictureSource(5) + toneSource(48000, 2) + fastH264;
    if (file == "picture-only.mp4")
        return pictureSource(1) + fastH264;
    // 4 s of tone then 3 s of digital silence as raw ADTS AAC: FFmpeg can only estimate its
    // length from the bitrate.
    if (file == "estimated.aac")
        return toneSource(44100, 7, "lt(t\\,4)");
    // 10 minutes of 16 kHz tone.
    if (file == "long-tone.wav")
        return toneSource(16000, 600);
    // About 17 s of speech in the formats a split reading must match: AAC, MP3, Opus, PCM at
    // 8 kHz mono, FLAC in 6 channels, and two PCM tracks, the second the speech 1.3 s later.
    if (file == "speech-long.m4a")
        return speechSource(44100, 2) + QStringList{"-c:a", "aac"};
    if (file == "speech-long.mp3")
        return speechSource(44100, 2) + QStringList{"-c:a", "libmp3lame"};
    if (file == "speech-long.ogg")
        return speechSource(48000, 2) + QStringList{"-c:a", "libopus"};
    if (file == "speech-long-8k.wav")
        return speechSource(8000, 1);
    if (file == "speech-long-6ch.flac")
        return speechSource(48000, 6);
    if (file == "speech-long-two.mov")
        return QStringList{"-stream_loop", "1", "-i", speechWithPauses(), "-itsoffset", "1.3"} +
               speechSource(48000, 1) + QStringList{"-map", "0", "-map", "1", "-c:a", "pcm_s16le"};
    // Bad input: no length; 0.03 s of tone, shorter than the shortest keep; a sound track that
    // holds no packets.
    if (file == "zero.wav")
        return silenceSource(48000, 1) + QStringList{"-t", "0"};
    if (file == "tiny-tone.wav")
        return toneSource(48000, 0.03);
    if (file == "no-samples.mkv")
        return pictureSource(2) + silenceSource(48000, 2) +
               QStringList{"-map", "0", "-map", "1", "-t", "2"} + fastH264 +
               QStringList{"-c:a", "pcm_s16le", "-frames:a", "0"};
    if (file == "pcm.mov")
        return toneSource(48000, 2) + QStringList{"-c:a", "pcm_s16le"};
    throw std::invalid_argument("no fixture " + file.toStdString());
}

} // namespace

QString media(const QString& file)
{
    // Made by hand: an empty file, a text named as an MP3, an MP4 cut in half with its index
    // at the end (lost) and at the front (kept), a movie whose sound codec no decoder knows.
    if (file == "empty.mp3")
        return writeOnce(file, {});
    if (file == "text.mp3")
        return writeOnce(file, "This is a note about the talk, not a recording.\n");
    if (file == "truncated.mp4")
        return firstHalf(file, {});
    if (file == "truncated-faststart.mp4")
        return firstHalf(file, {"-movflags", "+faststart"});
    if (file == "unknown-codec.mov")
        return withUnknownCodec(media("pcm.mov"), file);
    if (file == "hundred-channels.wav")
        return writeOnce(file, hundredChannelWav());
    return make(file, recipe(file));
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
        make("two-pcm.mov", silenceSource(48000, 4) +
                                toneSource(48000, 4, "not(between(t\\,1.5\\,2.5))") + twoPcmTracks);
    return {withUnknownCodec(movie, "unknown-beside-sound.mov"), 1.5, 2.5};
}

double decodedSeconds(const QString& path)
{
    return Fixtures::probeDuration(
        Fixtures::makeWithFfmpeg(QFileInfo(path).fileName() + "-decoded.wav", {"-i", path, "-vn"}));
}

} // namespace EngineFixtures
