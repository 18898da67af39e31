<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nb" sourcelanguage="en">
<context>
    <name>tulvane</name>
    <message>
        <source> or </source>
        <translation> eller </translation>
    </message>
    <message>
        <source>%1 EB</source>
        <translation>%1 EB</translation>
    </message>
    <message>
        <source>%1 GB</source>
        <translation>%1 GB</translation>
    </message>
    <message>
        <source>%1 KB</source>
        <translation>%1 kB</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 MB</translation>
    </message>
    <message>
        <source>%1 PB</source>
        <translation>%1 PB</translation>
    </message>
    <message>
        <source>%1 TB</source>
        <translation>%1 TB</translation>
    </message>
    <message>
        <source>%1 WPM</source>
        <translation>%1 ord/min</translation>
    </message>
    <message>
        <source>%1 active days in total</source>
        <translation>%1 aktive dager totalt</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 byte</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 t</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 t %2 min</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 of %2 days active</source>
        <translation>%1 av %2 dager aktive</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 saved vs. typing</source>
        <translation>%1 spart mot å skrive</translation>
    </message>
    <message>
        <source>%1 speaking · saved %2</source>
        <translation>%1 taletid · spart %2</translation>
    </message>
    <message>
        <source>%1 words</source>
        <translation>%1 ord</translation>
    </message>
    <message>
        <source>%1 words/min</source>
        <translation>%1 ord/min</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 byte</translation>
    </message>
    <message>
        <source>30 days</source>
        <translation>30 dager</translation>
    </message>
    <message>
        <source>7 days</source>
        <translation>7 dager</translation>
    </message>
    <message>
        <source>Accessibility API, then paste</source>
        <translation>Tilgjengelighets-API, deretter lim inn</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Totalt</translation>
    </message>
    <message>
        <source>Allow Tulvane to record in your desktop's sound or privacy settings.</source>
        <translation>La Tulvane ta opp lyd i lyd- eller personverninnstillingene på skrivebordet.</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Another program already uses this key combination. Choose another one, or free it in that program.</source>
        <translation>Et annet program bruker allerede denne tastekombinasjonen. Velg en annen, eller frigjør den i det programmet.</translation>
    </message>
    <message>
        <source>Another program is already downloading this file.</source>
        <translation>Et annet program laster allerede ned denne filen.</translation>
    </message>
    <message>
        <source>Auto-detect</source>
        <translation>Finn automatisk</translation>
    </message>
    <message>
        <source>Average per dictation</source>
        <translation>Snitt per diktering</translation>
    </message>
    <message>
        <source>Average speed</source>
        <translation>Gjennomsnittlig fart</translation>
    </message>
    <message>
        <source>Backspace</source>
        <translation>Slettetast</translation>
    </message>
    <message>
        <source>Backspace clears the field. To use fn or right ⌥ on its own, choose “Hold a single key” above.</source>
        <translation>Slettetasten tømmer feltet. Velg «Hold inne én tast» ovenfor for å bruke fn eller høyre ⌥ alene.</translation>
    </message>
    <message>
        <source>Bar chart of words dictated per day for the last %1 days</source>
        <translation>Søylediagram over dikterte ord per dag de siste %1 dagene</translation>
    </message>
    <message>
        <source>Best day</source>
        <translation>Beste dag</translation>
    </message>
    <message>
        <source>Bind the command “tulvane toggle” to a key in your desktop's keyboard settings.</source>
        <translation>Knytt kommandoen «tulvane toggle» til en tast i tastaturinnstillingene på skrivebordet.</translation>
    </message>
    <message>
        <source>Caps Lock</source>
        <translation>Caps Lock</translation>
    </message>
    <message>
        <source>Characters</source>
        <translation>Tegn</translation>
    </message>
    <message>
        <source>Clean, punctuated text. The best choice for everyday dictation – about 3× smaller than full precision with nearly identical accuracy.</source>
        <translation>Ren tekst med tegnsetting. Det beste valget til daglig diktering – omtrent 3× mindre enn full presisjon og nesten like nøyaktig.</translation>
    </message>
    <message>
        <source>Click the field, then press the whole combination at once, for example ⌥ Space or ⌃⌥ D.</source>
        <translation>Klikk i feltet og trykk hele kombinasjonen på én gang, for eksempel ⌥ mellomrom eller ⌃⌥ D.</translation>
    </message>
    <message>
        <source>Copied to clipboard</source>
        <translation>Kopiert til utklippstavlen</translation>
    </message>
    <message>
        <source>Copy to clipboard only</source>
        <translation>Bare kopier til utklippstavlen</translation>
    </message>
    <message>
        <source>Could not load the speech model at %1.</source>
        <translation>Kunne ikke laste talemodellen %1.</translation>
    </message>
    <message>
        <source>Could not start audio capture: %1</source>
        <translation>Kunne ikke starte lydopptak: %1</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Ctrl</translation>
    </message>
    <message>
        <source>Daily streak</source>
        <translation>Dager på rad</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Mørkt</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Dictate today to start a streak</source>
        <translation>Dikter i dag for å starte en rekke</translation>
    </message>
    <message>
        <source>Dictation</source>
        <translation>Diktering</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Ned</translation>
    </message>
    <message>
        <source>Downloaded %1, expected about %2. The download may be incomplete.</source>
        <translation>Lastet ned %1, forventet omtrent %2. Nedlastingen kan være ufullstendig.</translation>
    </message>
    <message>
        <source>Downloads do not work here: %1</source>
        <translation>Nedlasting virker ikke her: %1</translation>
    </message>
    <message>
        <source>Eisu</source>
        <translation>Eisu</translation>
    </message>
    <message>
        <source>End</source>
        <translation>End</translation>
    </message>
    <message>
        <source>English</source>
        <translation>Engelsk</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Feedback sound</source>
        <translation>Lydsignal</translation>
    </message>
    <message>
        <source>Full precision (f16)</source>
        <translation>Full presisjon (f16)</translation>
    </message>
    <message>
        <source>Hold to talk</source>
        <translation>Hold inne for å snakke</translation>
    </message>
    <message>
        <source>Hold to talk, tap to toggle</source>
        <translation>Hold inne for å snakke, trykk for å slå av og på</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Home</translation>
    </message>
    <message>
        <source>Hotkeys are not supported in a Wayland session yet.</source>
        <translation>Hurtigtaster støttes ikke i en Wayland-økt ennå.</translation>
    </message>
    <message>
        <source>Hotkeys are not supported in a Wayland session yet. Bind the command “tulvane toggle” to a key in the desktop's own keyboard settings.</source>
        <translation>Hurtigtaster støttes ennå ikke i en Wayland-økt. Knytt kommandoen «tulvane toggle» til en tast i skrivebordets egne tastaturinnstillinger.</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Insert</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Setter inn …</translation>
    </message>
    <message>
        <source>It must include ⌘, ⌃ or ⌥, or be a function key such as F5. Letters alone, ⇧ alone and fn alone are not accepted – the field just beeps.</source>
        <translation>Den må inneholde ⌘, ⌃ eller ⌥, eller være en funksjonstast som F5. Bokstaver alene, ⇧ alene og fn alene godtas ikke – feltet bare piper.</translation>
    </message>
    <message>
        <source>Kana</source>
        <translation>Kana</translation>
    </message>
    <message>
        <source>Keep it going all week</source>
        <translation>Hold det gående hele uken</translation>
    </message>
    <message>
        <source>Key %1</source>
        <translation>Tast %1</translation>
    </message>
    <message>
        <source>Keypad %1</source>
        <translation>Talltastatur %1</translation>
    </message>
    <message>
        <source>Last %1 days</source>
        <translation>Siste %1 dager</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>Venstre</translation>
    </message>
    <message>
        <source>Left Alt</source>
        <translation>Venstre Alt</translation>
    </message>
    <message>
        <source>Left Ctrl</source>
        <translation>Venstre Ctrl</translation>
    </message>
    <message>
        <source>Left Shift</source>
        <translation>Venstre Shift</translation>
    </message>
    <message>
        <source>Left Super</source>
        <translation>Venstre Super</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Lyst</translation>
    </message>
    <message>
        <source>Listening…</source>
        <translation>Lytter …</translation>
    </message>
    <message>
        <source>Measured from your dictations</source>
        <translation>Måles ut fra dikteringene dine</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Meny</translation>
    </message>
    <message>
        <source>Microphone access is required.</source>
        <translation>Tilgang til mikrofonen er nødvendig.</translation>
    </message>
    <message>
        <source>Microphone changed – recording cancelled</source>
        <translation>Mikrofonen ble byttet – opptaket er avbrutt</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>Demp</translation>
    </message>
    <message>
        <source>My typing speed: **%1** words/min</source>
        <translation>Min skrivefart: **%1** ord/min</translation>
    </message>
    <message>
        <source>NB-Whisper Medium</source>
        <translation>NB-Whisper Medium</translation>
    </message>
    <message>
        <source>NB-Whisper Semantic</source>
        <translation>NB-Whisper Semantic</translation>
    </message>
    <message>
        <source>NB-Whisper Verbatim</source>
        <translation>NB-Whisper Verbatim</translation>
    </message>
    <message>
        <source>No X display could be reached.</source>
        <translation>Fikk ikke kontakt med noen X-skjerm.</translation>
    </message>
    <message>
        <source>No hotkey set</source>
        <translation>Ingen hurtigtast valgt</translation>
    </message>
    <message>
        <source>No microphone is available.</source>
        <translation>Ingen mikrofon er tilgjengelig.</translation>
    </message>
    <message>
        <source>No recording is in progress.</source>
        <translation>Ingen opptak pågår.</translation>
    </message>
    <message>
        <source>No secure connection to the server could be made.</source>
        <translation>Kunne ikke opprette en sikker forbindelse til serveren.</translation>
    </message>
    <message>
        <source>No speech model is loaded.</source>
        <translation>Ingen talemodell er lastet.</translation>
    </message>
    <message>
        <source>Norsk</source>
        <translation>Norsk</translation>
    </message>
    <message>
        <source>Nothing heard</source>
        <translation>Hørte ingenting</translation>
    </message>
    <message>
        <source>Nothing recognised</source>
        <translation>Kjente ikke igjen noe</translation>
    </message>
    <message>
        <source>Num Lock</source>
        <translation>Num Lock</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Av</translation>
    </message>
    <message>
        <source>One day down, many more ahead</source>
        <translation>Første dag i boks, mange flere i vente</translation>
    </message>
    <message>
        <source>Page Down</source>
        <translation>Page Down</translation>
    </message>
    <message>
        <source>Page Up</source>
        <translation>Page Up</translation>
    </message>
    <message>
        <source>Paste (recommended)</source>
        <translation>Lim inn (anbefalt)</translation>
    </message>
    <message>
        <source>Pasting into other programs is not supported in a Wayland session yet.</source>
        <translation>Innliming i andre programmer støttes ikke i en Wayland-økt ennå.</translation>
    </message>
    <message>
        <source>Press shortcut</source>
        <translation>Trykk snarvei</translation>
    </message>
    <message>
        <source>Quantised (q5_0)</source>
        <translation>Kvantisert (q5_0)</translation>
    </message>
    <message>
        <source>Record shortcut</source>
        <translation>Spill inn snarvei</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>Enter</translation>
    </message>
    <message>
        <source>Rewrites more freely while keeping the meaning. Tidier sentences, less literal.</source>
        <translation>Skriver friere om, men beholder meningen. Ryddigere setninger, mindre ordrett.</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>Høyre</translation>
    </message>
    <message>
        <source>Right Alt</source>
        <translation>Høyre Alt</translation>
    </message>
    <message>
        <source>Right Ctrl</source>
        <translation>Høyre Ctrl</translation>
    </message>
    <message>
        <source>Right Shift</source>
        <translation>Høyre Shift</translation>
    </message>
    <message>
        <source>Right Super</source>
        <translation>Høyre Super</translation>
    </message>
    <message>
        <source>Right ⇧ Shift</source>
        <translation>Høyre ⇧ Skift</translation>
    </message>
    <message>
        <source>Right ⌃ Control</source>
        <translation>Høyre ⌃ Kontroll</translation>
    </message>
    <message>
        <source>Right ⌘ Command</source>
        <translation>Høyre ⌘ Kommando</translation>
    </message>
    <message>
        <source>Right ⌥ Option</source>
        <translation>Høyre ⌥ Tilvalg</translation>
    </message>
    <message>
        <source>Same model at full precision. Marginally more accurate on difficult audio, three times the download and memory.</source>
        <translation>Samme modell med full presisjon. Litt mer nøyaktig på vanskelig lyd, tre ganger så stor nedlasting og minnebruk.</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Mellomrom</translation>
    </message>
    <message>
        <source>Speaking time</source>
        <translation>Taletid</translation>
    </message>
    <message>
        <source>Start Tulvane from your desktop session, where DISPLAY is set.</source>
        <translation>Start Tulvane fra skrivebordsøkten, der DISPLAY er satt.</translation>
    </message>
    <message>
        <source>Start the X server with XTEST. Until then the text is left on the clipboard.</source>
        <translation>Start X-tjeneren med XTEST. Inntil da blir teksten liggende på utklippstavlen.</translation>
    </message>
    <message>
        <source>Streak</source>
        <translation>Dager på rad</translation>
    </message>
    <message>
        <source>Super</source>
        <translation>Super</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Tab</source>
        <translation>Tabulator</translation>
    </message>
    <message>
        <source>That's %1× faster than typing</source>
        <translation>Det er %1× raskere enn å skrive</translation>
    </message>
    <message>
        <source>The X server lacks the XInput 2 extension, so single keys cannot be watched.</source>
        <translation>X-tjeneren mangler utvidelsen XInput 2, så enkelttaster kan ikke følges.</translation>
    </message>
    <message>
        <source>The X server lacks the XTEST extension, so no keys can be pressed for you.</source>
        <translation>X-tjeneren mangler utvidelsen XTEST, så ingen taster kan trykkes for deg.</translation>
    </message>
    <message>
        <source>The connection was lost.</source>
        <translation>Forbindelsen ble brutt.</translation>
    </message>
    <message>
        <source>The desktop does not answer, so no hotkey can be registered. Start Tulvane again.</source>
        <translation>Skrivebordet svarer ikke, så ingen hurtigtast kan registreres. Start Tulvane på nytt.</translation>
    </message>
    <message>
        <source>The desktop does not answer, so no key can be watched. Start Tulvane again.</source>
        <translation>Skrivebordet svarer ikke, så ingen tast kan følges. Start Tulvane på nytt.</translation>
    </message>
    <message>
        <source>The download could not be written to disk: %1</source>
        <translation>Nedlastingen kunne ikke skrives til disk: %1</translation>
    </message>
    <message>
        <source>The download was cancelled.</source>
        <translation>Nedlastingen ble avbrutt.</translation>
    </message>
    <message>
        <source>The downloaded file failed its checksum. Please try again.</source>
        <translation>Kontrollsummen til filen som ble lastet ned, stemmer ikke. Prøv igjen.</translation>
    </message>
    <message>
        <source>The downloaded file is not a ggml model. The Hugging Face repo may not provide this file.</source>
        <translation>Filen som ble lastet ned, er ikke en ggml-modell. Det kan hende at Hugging Face-arkivet ikke har denne filen.</translation>
    </message>
    <message>
        <source>The key %1 never reaches programs on this desktop. Choose another key.</source>
        <translation>Tasten %1 når aldri frem til programmer på dette skrivebordet. Velg en annen tast.</translation>
    </message>
    <message>
        <source>The menu item “%1” already uses this key combination.</source>
        <translation>Menyvalget «%1» bruker allerede denne tastekombinasjonen.</translation>
    </message>
    <message>
        <source>The microphone is suspended.</source>
        <translation>Mikrofonen er satt på pause.</translation>
    </message>
    <message>
        <source>The microphone's audio format is not supported.</source>
        <translation>Mikrofonens lydformat støttes ikke.</translation>
    </message>
    <message>
        <source>The server could not be found. Is this computer online?</source>
        <translation>Fant ikke serveren. Er maskinen på nett?</translation>
    </message>
    <message>
        <source>The server could not be reached.</source>
        <translation>Fikk ikke kontakt med serveren.</translation>
    </message>
    <message>
        <source>The server responded with HTTP %1.</source>
        <translation>Serveren svarte med HTTP %1.</translation>
    </message>
    <message>
        <source>The server stopped answering.</source>
        <translation>Serveren sluttet å svare.</translation>
    </message>
    <message>
        <source>The server's answer is not a usable part of the file.</source>
        <translation>Svaret fra serveren er ikke en brukbar del av filen.</translation>
    </message>
    <message>
        <source>The setting could not be saved to %1: %2</source>
        <translation>Innstillingen kunne ikke lagres i %1: %2</translation>
    </message>
    <message>
        <source>The settings file %1 cannot be read: %2</source>
        <translation>Innstillingsfilen %1 kan ikke leses: %2</translation>
    </message>
    <message>
        <source>The settings file %1 is damaged and could not be set aside: %2</source>
        <translation>Innstillingsfilen %1 er skadet og kunne ikke legges til side: %2</translation>
    </message>
    <message>
        <source>The settings file was damaged. It was set aside as %1, and settings start afresh.</source>
        <translation>Innstillingsfilen var skadet. Den er lagt til side som %1, og innstillingene begynner på nytt.</translation>
    </message>
    <message>
        <source>The sound server did not answer in time.</source>
        <translation>Lydtjeneren svarte ikke i tide.</translation>
    </message>
    <message>
        <source>The sound server is not running.</source>
        <translation>Lydtjeneren kjører ikke.</translation>
    </message>
    <message>
        <source>The sound server refuses access to the microphone.</source>
        <translation>Lydtjeneren nekter tilgang til mikrofonen.</translation>
    </message>
    <message>
        <source>The speech model has not been downloaded yet.</source>
        <translation>Talemodellen er ikke lastet ned ennå.</translation>
    </message>
    <message>
        <source>The stored key combination makes no sense. Choose another one.</source>
        <translation>Den lagrede tastekombinasjonen gir ikke mening. Velg en annen.</translation>
    </message>
    <message>
        <source>The system already uses this key combination.</source>
        <translation>Systemet bruker allerede denne tastekombinasjonen.</translation>
    </message>
    <message>
        <source>The system refused this key combination (error %1). Choose another one.</source>
        <translation>Systemet avviste denne tastekombinasjonen (feil %1). Velg en annen.</translation>
    </message>
    <message>
        <source>The text is left on the clipboard: paste it yourself.</source>
        <translation>Teksten ligger på utklippstavlen: lim den inn selv.</translation>
    </message>
    <message>
        <source>The value for %1 cannot be stored.</source>
        <translation>Verdien for %1 kan ikke lagres.</translation>
    </message>
    <message>
        <source>There is no desktop here whose keys could be heard. Start Tulvane from a desktop session.</source>
        <translation>Det finnes ikke noe skrivebord her med taster å lytte til. Start Tulvane fra en skrivebordsøkt.</translation>
    </message>
    <message>
        <source>There is no folder for programs that start at login.</source>
        <translation>Det finnes ingen mappe for programmer som starter ved innlogging.</translation>
    </message>
    <message>
        <source>There is not enough free disk space: %1 more needed.</source>
        <translation>Det er for lite ledig diskplass: %1 mangler.</translation>
    </message>
    <message>
        <source>This X server lacks the extensions (XKB, XInput 2.1) that watching a key needs.</source>
        <translation>Denne X-tjeneren mangler utvidelsene (XKB, XInput 2.1) som trengs for å følge en tast.</translation>
    </message>
    <message>
        <source>This X server lacks the keyboard extension (XKB) that hotkeys need.</source>
        <translation>Denne X-tjeneren mangler tastaturutvidelsen (XKB) som hurtigtaster trenger.</translation>
    </message>
    <message>
        <source>This keyboard has no such key. Choose another combination.</source>
        <translation>Dette tastaturet har ingen slik tast. Velg en annen kombinasjon.</translation>
    </message>
    <message>
        <source>Time saved</source>
        <translation>Spart tid</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>I dag</translation>
    </message>
    <message>
        <source>Toggle (press to start, press to stop)</source>
        <translation>Av og på (trykk for å starte, trykk for å stoppe)</translation>
    </message>
    <message>
        <source>Too short</source>
        <translation>For kort</translation>
    </message>
    <message>
        <source>Total words dictated</source>
        <translation>Dikterte ord totalt</translation>
    </message>
    <message>
        <source>Transcribing…</source>
        <translation>Transkriberer …</translation>
    </message>
    <message>
        <source>Transcription failed (whisper error %1).</source>
        <translation>Transkriberingen mislyktes (whisper-feil %1).</translation>
    </message>
    <message>
        <source>Tulvane may not watch the keyboard. Allow input monitoring in the privacy settings.</source>
        <translation>Tulvane får ikke følge med på tastaturet. Tillat overvåking av inndata i personverninnstillingene.</translation>
    </message>
    <message>
        <source>Typing the same text would take</source>
        <translation>Å skrive den samme teksten ville tatt</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Opp</translation>
    </message>
    <message>
        <source>Use a key combination as the hotkey.</source>
        <translation>Bruk en tastekombinasjon som hurtigtast.</translation>
    </message>
    <message>
        <source>Volume Down</source>
        <translation>Volum ned</translation>
    </message>
    <message>
        <source>Volume Up</source>
        <translation>Volum opp</translation>
    </message>
    <message>
        <source>What the system uses can be changed in its keyboard settings.</source>
        <translation>Det systemet bruker, kan endres i tastaturinnstillingene.</translation>
    </message>
    <message>
        <source>Words dictated</source>
        <translation>Dikterte ord</translation>
    </message>
    <message>
        <source>Writes exactly what you said, including fillers and repetitions. For transcripts that must be word-for-word.</source>
        <translation>Skriver nøyaktig det du sa, med nølelyder og gjentakelser. For tekst som må være ordrett.</translation>
    </message>
    <message>
        <source>Your first words land here</source>
        <translation>De første ordene dine havner her</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 kB</translation>
    </message>
    <message>
        <source>fn / 🌐 Globe</source>
        <translation>fn / 🌐 Globus</translation>
    </message>
    <message>
        <source>vs. typing at %1 words/min</source>
        <translation>mot å skrive %1 ord/min</translation>
    </message>
</context>
</TS>
