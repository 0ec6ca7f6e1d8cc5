<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name></name>
    <message id="sensitivity.delicate">
        <source>Delicate</source>
        <translation>Behutsam</translation>
    </message>
    <message id="sensitivity.delicate.hint">
        <source>Cuts only long, clear pauses and leaves plenty of air around the words. Good for slow or careful speakers.</source>
        <translation>Schneidet nur lange, deutliche Pausen und lässt den Worten viel Luft. Gut für langsame oder bedächtige Sprecher.</translation>
    </message>
    <message id="sensitivity.standard">
        <source>Standard</source>
        <translation>Standard</translation>
    </message>
    <message id="sensitivity.standard.hint">
        <source>Removes the ordinary gaps of everyday speech and keeps a natural rhythm. Right for most talks and podcasts.</source>
        <translation>Entfernt die üblichen Lücken gesprochener Sprache und wahrt einen natürlichen Rhythmus. Passt für die meisten Vorträge und Podcasts.</translation>
    </message>
    <message id="sensitivity.aggressive">
        <source>Aggressive</source>
        <translation>Gründlich</translation>
    </message>
    <message id="sensitivity.aggressive.hint">
        <source>Also removes short breaths and hesitations, with cuts close to the words. Makes a brisk, tight recording.</source>
        <translation>Entfernt auch kurze Atempausen und Zögern und schneidet dicht an den Worten. Ergibt eine flotte, straffe Aufnahme.</translation>
    </message>
    <message id="sensitivity.custom">
        <source>Custom</source>
        <translation>Eigene</translation>
    </message>
    <message id="sensitivity.custom.hint">
        <source>Set the quiet threshold, the shortest pause and the padding yourself.</source>
        <translation>Stilleschwelle, kürzeste Pause und Rand selbst einstellen.</translation>
    </message>
    <message id="diag.zeroDuration">
        <source>it has no length</source>
        <translation>sie hat keine Länge</translation>
    </message>
    <message id="diag.audioFormat">
        <source>its sound cannot be converted for analysis</source>
        <translation>ihr Ton lässt sich für die Analyse nicht umwandeln</translation>
    </message>
    <message id="diag.audioRead">
        <source>decoding its sound failed</source>
        <translation>das Dekodieren ihres Tons ist fehlgeschlagen</translation>
    </message>
    <message id="diag.truncated">
        <source>it is cut short and part of its sound is missing</source>
        <translation>sie ist abgeschnitten, ein Teil ihres Tons fehlt</translation>
    </message>
    <message id="diag.composition">
        <source>no sound track could be set up for the new file</source>
        <translation>für die neue Datei ließ sich keine Tonspur anlegen</translation>
    </message>
    <message id="diag.noEncoder">
        <source>no encoder is available for this kind of file</source>
        <translation>für diese Art Datei ist kein Encoder verfügbar</translation>
    </message>
    <message id="diag.unknown">
        <source>an unknown error occurred</source>
        <translation>ein unbekannter Fehler ist aufgetreten</translation>
    </message>
    <message id="diag.sameFile">
        <source>the destination is the original recording, which is never overwritten</source>
        <translation>das Ziel ist die Originalaufnahme, und die wird nie überschrieben</translation>
    </message>
    <message id="error.unreadable">
        <source>This file cannot be read: %1.</source>
        <translation>Diese Datei kann nicht gelesen werden: %1.</translation>
    </message>
    <message id="error.exportFailed">
        <source>The new file could not be written: %1.</source>
        <translation>Die neue Datei konnte nicht geschrieben werden: %1.</translation>
    </message>
    <message id="error.noAudio">
        <source>This file has no sound to work with.</source>
        <translation>Diese Datei hat keinen Ton, mit dem sich arbeiten ließe.</translation>
    </message>
    <message id="error.noVideo">
        <source>This file has no video.</source>
        <translation>Diese Datei enthält kein Video.</translation>
    </message>
    <message id="error.allSilent">
        <source>The whole recording is quiet, so there is nothing to keep.</source>
        <translation>Die ganze Aufnahme ist still, es bleibt nichts übrig.</translation>
    </message>
    <message id="error.cancelled">
        <source>Cancelled.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message id="error.overwrite">
        <source>The original recording is never overwritten. Choose another name for the new file.</source>
        <translation>Die Originalaufnahme wird nie überschrieben. Wählen Sie einen anderen Namen für die neue Datei.</translation>
    </message>
    <message id="batch.skip.noAudio">
        <source>No sound</source>
        <translation>Kein Ton</translation>
    </message>
    <message id="batch.skip.allSilent">
        <source>Quiet throughout</source>
        <translation>Durchgehend still</translation>
    </message>
    <message id="batch.skip.noPauses">
        <source>No pauses to remove</source>
        <translation>Keine Pausen zu entfernen</translation>
    </message>
    <message id="batch.fail.cancelled">
        <source>Stopped</source>
        <translation>Angehalten</translation>
    </message>
    <message id="notify.batch.title">
        <source>Batch finished</source>
        <translation>Stapel fertig</translation>
    </message>
    <message id="notify.video.title">
        <source>Pauses removed</source>
        <translation>Pausen entfernt</translation>
    </message>
    <message id="notify.video.body">
        <source>%1 is ready, %2 shorter.</source>
        <translation>%1 ist fertig, %2 kürzer.</translation>
    </message>
    <message id="saved.hours">
        <source>%1 h</source>
        <translation>%1 Std.</translation>
    </message>
    <message id="saved.minutes">
        <source>%1 min</source>
        <translation>%1 Min.</translation>
    </message>
    <message id="saved.seconds">
        <source>%1 s</source>
        <translation>%1 Sek.</translation>
    </message>
    <message id="file.suffix">
        <source>%1 (no pauses)</source>
        <translation>%1 (ohne Pausen)</translation>
    </message>
    <message id="batch.summary.files" numerus="yes">
        <source>%n files</source>
        <translation>
            <numerusform>%n Datei</numerusform>
            <numerusform>%n Dateien</numerusform>
        </translation>
    </message>
    <message id="batch.summary.done" numerus="yes">
        <source>%n done</source>
        <translation>
            <numerusform>%n fertig</numerusform>
            <numerusform>%n fertig</numerusform>
        </translation>
    </message>
    <message id="batch.summary.skipped" numerus="yes">
        <source>%n skipped</source>
        <translation>
            <numerusform>%n übersprungen</numerusform>
            <numerusform>%n übersprungen</numerusform>
        </translation>
    </message>
    <message id="notify.batch.body" numerus="yes">
        <source>%n files written without their pauses.</source>
        <translation>
            <numerusform>%n Datei ohne ihre Pausen geschrieben.</numerusform>
            <numerusform>%n Dateien ohne ihre Pausen geschrieben.</numerusform>
        </translation>
    </message>
    <message id="Hushpane">
        <source>Hushpane</source>
        <translation>Hushpane</translation>
    </message>
    <message id="about.menu">
        <source>About Hushpane</source>
        <translation>Über Hushpane</translation>
    </message>
    <message id="about.credits">
        <source>Removes the pauses from spoken recordings. So far it has saved you %1.</source>
        <translation>Entfernt die Pausen aus Sprachaufnahmen. Bisher hat es Ihnen %1 gespart.</translation>
    </message>
    <message id="panel.open.message">
        <source>Choose a recording, several recordings or a folder</source>
        <translation>Wählen Sie eine Aufnahme, mehrere Aufnahmen oder einen Ordner</translation>
    </message>
    <message id="panel.save.video">
        <source>Save the video without its pauses</source>
        <translation>Video ohne Pausen speichern</translation>
    </message>
    <message id="panel.save.audio">
        <source>Save the recording without its pauses</source>
        <translation>Aufnahme ohne Pausen speichern</translation>
    </message>
    <message id="welcome.title">
        <source>Drop a recording here</source>
        <translation>Aufnahme hier ablegen</translation>
    </message>
    <message id="welcome.subtitle">
        <source>Talks, lectures and podcasts, as audio or video</source>
        <translation>Vorträge, Vorlesungen und Podcasts, als Audio oder Video</translation>
    </message>
    <message id="welcome.batchHint">
        <source>Drop several files or a folder to process them all at once</source>
        <translation>Mehrere Dateien oder einen Ordner ablegen, um alle auf einmal zu bearbeiten</translation>
    </message>
    <message id="welcome.pick">
        <source>Choose a File…</source>
        <translation>Datei wählen…</translation>
    </message>
    <message id="welcome.saved">
        <source>Time saved so far: %1</source>
        <translation>Bisher gesparte Zeit: %1</translation>
    </message>
    <message id="header.otherFile">
        <source>Other File…</source>
        <translation>Andere Datei…</translation>
    </message>
    <message id="preview.skipPauses">
        <source>Skip pauses</source>
        <translation>Pausen überspringen</translation>
    </message>
    <message id="preview.skipPauses.help">
        <source>Play the preview as the new file will sound, jumping over the pauses that will be removed</source>
        <translation>Die Vorschau so abspielen, wie die neue Datei klingen wird: Pausen, die entfernt werden, werden übersprungen</translation>
    </message>
    <message id="sensitivity.title">
        <source>Sensitivity</source>
        <translation>Empfindlichkeit</translation>
    </message>
    <message id="timeline.legend.keep">
        <source>Kept</source>
        <translation>Bleibt</translation>
    </message>
    <message id="timeline.legend.cut">
        <source>Removed</source>
        <translation>Entfällt</translation>
    </message>
    <message id="timeline.legend.restored">
        <source>Given back</source>
        <translation>Zurückgeholt</translation>
    </message>
    <message id="timeline.reset">
        <source>Remove all again</source>
        <translation>Alle wieder entfernen</translation>
    </message>
    <message id="timeline.pausesCount" numerus="yes">
        <source>%n pauses…</source>
        <translation>
            <numerusform>%n Pause…</numerusform>
            <numerusform>%n Pausen…</numerusform>
        </translation>
    </message>
    <message id="advanced.threshold">
        <source>Quiet below</source>
        <translation>Still unter</translation>
    </message>
    <message id="advanced.minPause">
        <source>Shortest pause</source>
        <translation>Kürzeste Pause</translation>
    </message>
    <message id="advanced.padding">
        <source>Padding</source>
        <translation>Rand</translation>
    </message>
    <message id="advanced.save">
        <source>Save mode</source>
        <translation>Speichern</translation>
    </message>
    <message id="advanced.save.accurate">
        <source>Frame-accurate</source>
        <translation>Bildgenau</translation>
    </message>
    <message id="advanced.save.fast">
        <source>Fast</source>
        <translation>Schnell</translation>
    </message>
    <message id="advanced.save.help">
        <source>Frame-accurate cuts video exactly and re-encodes it; fast copies the video unchanged and is many times quicker</source>
        <translation>Bildgenau schneidet das Video exakt und kodiert es neu; Schnell kopiert das Video unverändert und ist um ein Vielfaches flotter</translation>
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
        <translation>Keine Pausen gefunden</translation>
    </message>
    <message id="result.allKept">
        <source>Every pause is given back, so nothing will be removed</source>
        <translation>Alle Pausen sind zurückgeholt, es wird nichts entfernt</translation>
    </message>
    <message id="result.found" numerus="yes">
        <source>%n pauses found</source>
        <translation>
            <numerusform>%n Pause gefunden</numerusform>
            <numerusform>%n Pausen gefunden</numerusform>
        </translation>
    </message>
    <message id="result.analyzing">
        <source>Listening for pauses…</source>
        <translation>Pausen werden gesucht…</translation>
    </message>
    <message id="result.cancel">
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message id="result.save.video">
        <source>Save Video…</source>
        <translation>Video speichern…</translation>
    </message>
    <message id="result.save.audio">
        <source>Save Audio…</source>
        <translation>Audio speichern…</translation>
    </message>
    <message id="result.saving.video">
        <source>Saving the video…</source>
        <translation>Video wird gespeichert…</translation>
    </message>
    <message id="result.saving.audio">
        <source>Saving the recording…</source>
        <translation>Aufnahme wird gespeichert…</translation>
    </message>
    <message id="result.done">
        <source>%1 saved, now %2 long</source>
        <translation>%1 gespeichert, jetzt %2 lang</translation>
    </message>
    <message id="result.open">
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message id="result.revealFinder">
        <source>Show in Folder</source>
        <translation>Im Ordner zeigen</translation>
    </message>
    <message id="result.failed">
        <source>Something went wrong.</source>
        <translation>Etwas ist schiefgegangen.</translation>
    </message>
    <message id="result.retry">
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message id="batch.title">
        <source>Batch</source>
        <translation>Stapel</translation>
    </message>
    <message id="batch.clear">
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message id="batch.run">
        <source>Remove Pauses</source>
        <translation>Pausen entfernen</translation>
    </message>
    <message id="batch.stop">
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message id="batch.row.waiting">
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message id="batch.row.analyzing">
        <source>Analysing…</source>
        <translation>Wird analysiert…</translation>
    </message>
    <message id="timeline.pauseButton.help">
        <source>Click to keep this pause, click again to remove it</source>
        <translation>Klicken, um diese Pause zu behalten; erneut klicken, um sie zu entfernen</translation>
    </message>
    <message id="timeline.accessible.name">
        <source>Timeline</source>
        <translation>Zeitleiste</translation>
    </message>
    <message id="timeline.accessible.description">
        <source>The recording's loudness, coloured by what is kept and what is removed. Drag to move the playhead; click a pause to keep it or remove it.</source>
        <translation>Die Lautstärke der Aufnahme, eingefärbt danach, was bleibt und was entfällt. Ziehen verschiebt die Abspielposition; ein Klick auf eine Pause behält oder entfernt sie.</translation>
    </message>
    <message id="pauseList.title">
        <source>Pauses</source>
        <translation>Pausen</translation>
    </message>
    <message id="pauseList.listen.help">
        <source>Listen from a second before this pause</source>
        <translation>Ab einer Sekunde vor dieser Pause anhören</translation>
    </message>
    <message id="a11y.busy">
        <source>Working</source>
        <translation>In Arbeit</translation>
    </message>
    <message id="preview.play">
        <source>Play</source>
        <translation>Abspielen</translation>
    </message>
    <message id="preview.pause">
        <source>Pause</source>
        <translation>Anhalten</translation>
    </message>
    <message id="panel.open.filter">
        <source>Recordings (%1)</source>
        <translation>Aufnahmen (%1)</translation>
    </message>
    <message id="panel.allFiles">
        <source>All files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message id="panel.openFolder.message">
        <source>Choose a folder of recordings</source>
        <translation>Wählen Sie einen Ordner mit Aufnahmen</translation>
    </message>
    <message id="menu.file">
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message id="menu.open">
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen…</translation>
    </message>
    <message id="menu.openFolder">
        <source>Open &amp;Folder…</source>
        <translation>&amp;Ordner öffnen…</translation>
    </message>
    <message id="menu.save">
        <source>&amp;Save…</source>
        <translation>&amp;Speichern…</translation>
    </message>
    <message id="menu.saveCutList">
        <source>Save &amp;Cut List…</source>
        <translation>Sch&amp;nittliste speichern…</translation>
    </message>
    <message id="result.cutList">
        <source>Save cut list…</source>
        <translation>Schnittliste speichern…</translation>
    </message>
    <message id="panel.cutList">
        <source>Save a cut list for video editors: an EDL and a Final Cut Pro XML file under this name</source>
        <translation>Schnittliste für Videoschnittprogramme speichern: eine EDL und eine Final-Cut-Pro-XML-Datei unter diesem Namen</translation>
    </message>
    <message id="cutList.failed">
        <source>The cut list could not be saved</source>
        <translation>Die Schnittliste konnte nicht gespeichert werden</translation>
    </message>
    <message id="menu.quit">
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message id="menu.help">
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message id="about.version">
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message id="quit.busy.title">
        <source>Still working</source>
        <translation>Noch in Arbeit</translation>
    </message>
    <message id="quit.busy.text">
        <source>A new file is still being written. If you quit now, it will not be finished.</source>
        <translation>Eine neue Datei wird noch geschrieben. Wenn Sie jetzt beenden, wird sie nicht fertig.</translation>
    </message>
    <message id="quit.busy.quit">
        <source>Quit Anyway</source>
        <translation>Trotzdem beenden</translation>
    </message>
    <message id="quit.busy.keep">
        <source>Keep Working</source>
        <translation>Weiterarbeiten</translation>
    </message>
    <message id="noDisplay">
        <source>Hushpane found no display to open its window on. To process a file in the terminal: hushpane --cli &lt;input&gt; [output]</source>
        <translation>Hushpane hat keinen Bildschirm für sein Fenster gefunden. So bearbeiten Sie eine Datei im Terminal: hushpane --cli &lt;Eingabe&gt; [Ausgabe]</translation>
    </message>
    <message id="a11y.preview">
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
</context>
</TS>
