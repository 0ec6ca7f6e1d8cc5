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
</context>
</TS>
