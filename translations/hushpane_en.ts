<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name></name>
    <message id="sensitivity.delicate">
        <source>Delicate</source>
        <translation>Delicate</translation>
    </message>
    <message id="sensitivity.delicate.hint">
        <source>Cuts only long, clear pauses and leaves plenty of air around the words. Good for slow or careful speakers.</source>
        <translation>Cuts only long, clear pauses and leaves plenty of air around the words. Good for slow or careful speakers.</translation>
    </message>
    <message id="sensitivity.standard">
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message id="sensitivity.standard.hint">
        <source>Removes the ordinary gaps of everyday speech and keeps a natural rhythm. Right for most talks and podcasts.</source>
        <translation>Removes the ordinary gaps of everyday speech and keeps a natural rhythm. Right for most talks and podcasts.</translation>
    </message>
    <message id="sensitivity.aggressive">
        <source>Aggressive</source>
        <translation>Aggressive</translation>
    </message>
    <message id="sensitivity.aggressive.hint">
        <source>Also removes short breaths and hesitations, with cuts close to the words. Makes a brisk, tight recording.</source>
        <translation>Also removes short breaths and hesitations, with cuts close to the words. Makes a brisk, tight recording.</translation>
    </message>
    <message id="sensitivity.custom">
        <source>Custom</source>
        <translation>Custom</translation>
    </message>
    <message id="sensitivity.custom.hint">
        <source>Set the quiet threshold, the shortest pause and the padding yourself.</source>
        <translation>Set the quiet threshold, the shortest pause and the padding yourself.</translation>
    </message>
    <message id="diag.zeroDuration">
        <source>it has no length</source>
        <translation>it has no length</translation>
    </message>
    <message id="diag.audioFormat">
        <source>its sound cannot be converted for analysis</source>
        <translation>its sound cannot be converted for analysis</translation>
    </message>
    <message id="diag.audioRead">
        <source>decoding its sound failed</source>
        <translation>decoding its sound failed</translation>
    </message>
    <message id="diag.truncated">
        <source>it is cut short and part of its sound is missing</source>
        <translation>it is cut short and part of its sound is missing</translation>
    </message>
    <message id="diag.composition">
        <source>no sound track could be set up for the new file</source>
        <translation>no sound track could be set up for the new file</translation>
    </message>
    <message id="diag.noEncoder">
        <source>no encoder is available for this kind of file</source>
        <translation>no encoder is available for this kind of file</translation>
    </message>
    <message id="diag.unknown">
        <source>an unknown error occurred</source>
        <translation>an unknown error occurred</translation>
    </message>
    <message id="diag.sameFile">
        <source>the destination is the original recording, which is never overwritten</source>
        <translation>the destination is the original recording, which is never overwritten</translation>
    </message>
    <message id="error.unreadable">
        <source>This file cannot be read: %1.</source>
        <translation>This file cannot be read: %1.</translation>
    </message>
    <message id="error.exportFailed">
        <source>The new file could not be written: %1.</source>
        <translation>The new file could not be written: %1.</translation>
    </message>
    <message id="error.noAudio">
        <source>This file has no sound to work with.</source>
        <translation>This file has no sound to work with.</translation>
    </message>
    <message id="error.noVideo">
        <source>This file has no video.</source>
        <translation>This file has no video.</translation>
    </message>
    <message id="error.allSilent">
        <source>The whole recording is quiet, so there is nothing to keep.</source>
        <translation>The whole recording is quiet, so there is nothing to keep.</translation>
    </message>
    <message id="error.cancelled">
        <source>Cancelled.</source>
        <translation>Cancelled.</translation>
    </message>
    <message id="error.overwrite">
        <source>The original recording is never overwritten. Choose another name for the new file.</source>
        <translation>The original recording is never overwritten. Choose another name for the new file.</translation>
    </message>
    <message id="batch.skip.noAudio">
        <source>No sound</source>
        <translation>No sound</translation>
    </message>
    <message id="batch.skip.allSilent">
        <source>Quiet throughout</source>
        <translation>Quiet throughout</translation>
    </message>
    <message id="batch.skip.noPauses">
        <source>No pauses to remove</source>
        <translation>No pauses to remove</translation>
    </message>
    <message id="batch.fail.cancelled">
        <source>Stopped</source>
        <translation>Stopped</translation>
    </message>
    <message id="notify.batch.title">
        <source>Batch finished</source>
        <translation>Batch finished</translation>
    </message>
    <message id="notify.video.title">
        <source>Pauses removed</source>
        <translation>Pauses removed</translation>
    </message>
    <message id="notify.video.body">
        <source>%1 is ready, %2 shorter.</source>
        <translation>%1 is ready, %2 shorter.</translation>
    </message>
    <message id="saved.hours">
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message id="saved.minutes">
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message id="saved.seconds">
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message id="file.suffix">
        <source>%1 (no pauses)</source>
        <translation>%1 (no pauses)</translation>
    </message>
    <message id="batch.summary.files" numerus="yes">
        <source>%n files</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
    </message>
    <message id="batch.summary.done" numerus="yes">
        <source>%n done</source>
        <translation>
            <numerusform>%n done</numerusform>
            <numerusform>%n done</numerusform>
        </translation>
    </message>
    <message id="batch.summary.skipped" numerus="yes">
        <source>%n skipped</source>
        <translation>
            <numerusform>%n skipped</numerusform>
            <numerusform>%n skipped</numerusform>
        </translation>
    </message>
    <message id="notify.batch.body" numerus="yes">
        <source>%n files written without their pauses.</source>
        <translation>
            <numerusform>%n file written without its pauses.</numerusform>
            <numerusform>%n files written without their pauses.</numerusform>
        </translation>
    </message>
    <message id="Hushpane">
        <source>Hushpane</source>
        <translation>Hushpane</translation>
    </message>
    <message id="about.menu">
        <source>About Hushpane</source>
        <translation>About Hushpane</translation>
    </message>
    <message id="about.credits">
        <source>Removes the pauses from spoken recordings. So far it has saved you %1.</source>
        <translation>Removes the pauses from spoken recordings. So far it has saved you %1.</translation>
    </message>
    <message id="panel.open.message">
        <source>Choose a recording, several recordings or a folder</source>
        <translation>Choose a recording, several recordings or a folder</translation>
    </message>
    <message id="panel.save.video">
        <source>Save the video without its pauses</source>
        <translation>Save the video without its pauses</translation>
    </message>
    <message id="panel.save.audio">
        <source>Save the recording without its pauses</source>
        <translation>Save the recording without its pauses</translation>
    </message>
    <message id="welcome.title">
        <source>Drop a recording here</source>
        <translation>Drop a recording here</translation>
    </message>
    <message id="welcome.subtitle">
        <source>Talks, lectures and podcasts, as audio or video</source>
        <translation>Talks, lectures and podcasts, as audio or video</translation>
    </message>
    <message id="welcome.batchHint">
        <source>Drop several files or a folder to process them all at once</source>
        <translation>Drop several files or a folder to process them all at once</translation>
    </message>
    <message id="welcome.pick">
        <source>Choose a File…</source>
        <translation>Choose a File…</translation>
    </message>
    <message id="welcome.saved">
        <source>Time saved so far: %1</source>
        <translation>Time saved so far: %1</translation>
    </message>
    <message id="header.otherFile">
        <source>Other File…</source>
        <translation>Other File…</translation>
    </message>
    <message id="preview.skipPauses">
        <source>Skip pauses</source>
        <translation>Skip pauses</translation>
    </message>
    <message id="preview.skipPauses.help">
        <source>Play the preview as the new file will sound, jumping over the pauses that will be removed</source>
        <translation>Play the preview as the new file will sound, jumping over the pauses that will be removed</translation>
    </message>
    <message id="sensitivity.title">
        <source>Sensitivity</source>
        <translation>Sensitivity</translation>
    </message>
    <message id="timeline.legend.keep">
        <source>Kept</source>
        <translation>Kept</translation>
    </message>
    <message id="timeline.legend.cut">
        <source>Removed</source>
        <translation>Removed</translation>
    </message>
    <message id="timeline.legend.restored">
        <source>Given back</source>
        <translation>Given back</translation>
    </message>
    <message id="timeline.reset">
        <source>Remove all again</source>
        <translation>Remove all again</translation>
    </message>
    <message id="timeline.pausesCount" numerus="yes">
        <source>%n pauses…</source>
        <translation>
            <numerusform>%n pause…</numerusform>
            <numerusform>%n pauses…</numerusform>
        </translation>
    </message>
    <message id="advanced.threshold">
        <source>Quiet below</source>
        <translation>Quiet below</translation>
    </message>
    <message id="advanced.minPause">
        <source>Shortest pause</source>
        <translation>Shortest pause</translation>
    </message>
    <message id="advanced.padding">
        <source>Padding</source>
        <translation>Padding</translation>
    </message>
    <message id="advanced.save">
        <source>Save mode</source>
        <translation>Save mode</translation>
    </message>
    <message id="advanced.save.accurate">
        <source>Frame-accurate</source>
        <translation>Frame-accurate</translation>
    </message>
    <message id="advanced.save.fast">
        <source>Fast</source>
        <translation>Fast</translation>
    </message>
    <message id="advanced.save.help">
        <source>Frame-accurate cuts video exactly and re-encodes it; fast copies the video unchanged and is many times quicker</source>
        <translation>Frame-accurate cuts video exactly and re-encodes it; fast copies the video unchanged and is many times quicker</translation>
    </message>
    <message id="unit.db">
        <source>%1 dB</source>
        <translation>%1 dB</translation>
    </message>
    <message id="unit.seconds">
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message id="result.noPauses">
        <source>No pauses found</source>
        <translation>No pauses found</translation>
    </message>
    <message id="result.allKept">
        <source>Every pause is given back, so nothing will be removed</source>
        <translation>Every pause is given back, so nothing will be removed</translation>
    </message>
    <message id="result.found" numerus="yes">
        <source>%n pauses found</source>
        <translation>
            <numerusform>%n pause found</numerusform>
            <numerusform>%n pauses found</numerusform>
        </translation>
    </message>
    <message id="result.analyzing">
        <source>Listening for pauses…</source>
        <translation>Listening for pauses…</translation>
    </message>
    <message id="result.cancel">
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message id="result.save.video">
        <source>Save Video…</source>
        <translation>Save Video…</translation>
    </message>
    <message id="result.save.audio">
        <source>Save Audio…</source>
        <translation>Save Audio…</translation>
    </message>
    <message id="result.saving.video">
        <source>Saving the video…</source>
        <translation>Saving the video…</translation>
    </message>
    <message id="result.saving.audio">
        <source>Saving the recording…</source>
        <translation>Saving the recording…</translation>
    </message>
    <message id="result.done">
        <source>%1 saved, now %2 long</source>
        <translation>%1 saved, now %2 long</translation>
    </message>
    <message id="result.open">
        <source>Open</source>
        <translation>Open</translation>
    </message>
    <message id="result.revealFinder">
        <source>Show in Folder</source>
        <translation>Show in Folder</translation>
    </message>
    <message id="result.failed">
        <source>Something went wrong.</source>
        <translation>Something went wrong.</translation>
    </message>
    <message id="result.retry">
        <source>Try Again</source>
        <translation>Try Again</translation>
    </message>
    <message id="batch.title">
        <source>Batch</source>
        <translation>Batch</translation>
    </message>
    <message id="batch.clear">
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message id="batch.run">
        <source>Remove Pauses</source>
        <translation>Remove Pauses</translation>
    </message>
    <message id="batch.stop">
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message id="batch.row.waiting">
        <source>Waiting</source>
        <translation>Waiting</translation>
    </message>
    <message id="batch.row.analyzing">
        <source>Analysing…</source>
        <translation>Analysing…</translation>
    </message>
    <message id="timeline.pauseButton.help">
        <source>Click to keep this pause, click again to remove it</source>
        <translation>Click to keep this pause, click again to remove it</translation>
    </message>
    <message id="timeline.accessible.name">
        <source>Timeline</source>
        <translation>Timeline</translation>
    </message>
    <message id="timeline.accessible.description">
        <source>The recording's loudness, coloured by what is kept and what is removed. Drag to move the playhead; click a pause to keep it or remove it.</source>
        <translation>The recording's loudness, coloured by what is kept and what is removed. Drag to move the playhead; click a pause to keep it or remove it.</translation>
    </message>
    <message id="pauseList.title">
        <source>Pauses</source>
        <translation>Pauses</translation>
    </message>
    <message id="pauseList.listen.help">
        <source>Listen from a second before this pause</source>
        <translation>Listen from a second before this pause</translation>
    </message>
    <message id="a11y.busy">
        <source>Working</source>
        <translation>Working</translation>
    </message>
    <message id="preview.play">
        <source>Play</source>
        <translation>Play</translation>
    </message>
    <message id="preview.pause">
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message id="panel.open.filter">
        <source>Recordings (%1)</source>
        <translation>Recordings (%1)</translation>
    </message>
    <message id="panel.allFiles">
        <source>All files</source>
        <translation>All files</translation>
    </message>
    <message id="panel.openFolder.message">
        <source>Choose a folder of recordings</source>
        <translation>Choose a folder of recordings</translation>
    </message>
    <message id="menu.file">
        <source>&amp;File</source>
        <translation>&amp;File</translation>
    </message>
    <message id="menu.open">
        <source>&amp;Open…</source>
        <translation>&amp;Open…</translation>
    </message>
    <message id="menu.openFolder">
        <source>Open &amp;Folder…</source>
        <translation>Open &amp;Folder…</translation>
    </message>
    <message id="menu.save">
        <source>&amp;Save…</source>
        <translation>&amp;Save…</translation>
    </message>
    <message id="menu.saveCutList">
        <source>Save &amp;Cut List…</source>
        <translation>Save &amp;Cut List…</translation>
    </message>
    <message id="result.cutList">
        <source>Save cut list…</source>
        <translation>Save cut list…</translation>
    </message>
    <message id="panel.cutList">
        <source>Save a cut list for video editors: an EDL and a Final Cut Pro XML file under this name</source>
        <translation>Save a cut list for video editors: an EDL and a Final Cut Pro XML file under this name</translation>
    </message>
    <message id="cutList.failed">
        <source>The cut list could not be saved</source>
        <translation>The cut list could not be saved</translation>
    </message>
    <message id="menu.quit">
        <source>&amp;Quit</source>
        <translation>&amp;Quit</translation>
    </message>
    <message id="menu.help">
        <source>&amp;Help</source>
        <translation>&amp;Help</translation>
    </message>
    <message id="about.version">
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message id="quit.busy.title">
        <source>Still working</source>
        <translation>Still working</translation>
    </message>
    <message id="quit.busy.text">
        <source>A new file is still being written. If you quit now, it will not be finished.</source>
        <translation>A new file is still being written. If you quit now, it will not be finished.</translation>
    </message>
    <message id="quit.busy.quit">
        <source>Quit Anyway</source>
        <translation>Quit Anyway</translation>
    </message>
    <message id="quit.busy.keep">
        <source>Keep Working</source>
        <translation>Keep Working</translation>
    </message>
    <message id="noDisplay">
        <source>Hushpane found no display to open its window on. To process a file in the terminal: hushpane --cli &lt;input&gt; [output]</source>
        <translation>Hushpane found no display to open its window on. To process a file in the terminal: hushpane --cli &lt;input&gt; [output]</translation>
    </message>
    <message id="a11y.preview">
        <source>Preview</source>
        <translation>Preview</translation>
    </message>
</context>
</TS>
