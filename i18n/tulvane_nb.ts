<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="nb" sourcelanguage="en">
<context>
    <name>tulvane</name>
    <message>
        <source> You can close this and come back any time from Settings › Setup guide.</source>
        <translation> Du kan lukke dette og komme tilbake når som helst fra Innstillinger › Oppsettsveiviser.</translation>
    </message>
    <message>
        <source> You can close this and come back any time from the menu-bar icon › Setup guide.</source>
        <translation> Du kan lukke dette og komme tilbake når som helst fra ikonet i systemstatusfeltet › Oppsettsveiviser.</translation>
    </message>
    <message>
        <source> of </source>
        <translation> av </translation>
    </message>
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
        <source>%1 does not work as the hotkey</source>
        <translation>%1 virker ikke som hurtigtast</translation>
    </message>
    <message>
        <source>%1 does not work as the hotkey. The step “Hotkey” says why.</source>
        <translation>%1 virker ikke som hurtigtast. Steget «Hurtigtast» sier hvorfor.</translation>
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
        <source>%1 steps left.</source>
        <translation>%1 steg gjenstår.</translation>
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
        <source>%1/%2 completed</source>
        <translation>%1 av %2 fullført</translation>
    </message>
    <message>
        <source>%1/%2 steps completed</source>
        <translation>%1 av %2 steg fullført</translation>
    </message>
    <message>
        <source>1 byte</source>
        <translation>1 byte</translation>
    </message>
    <message>
        <source>1 step left.</source>
        <translation>1 steg gjenstår.</translation>
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
        <source>A download that you start again goes on from there. What is left alone for 30 days is removed.</source>
        <translation>En nedlasting som du starter igjen, fortsetter derfra. Det som ligger urørt i 30 dager, fjernes.</translation>
    </message>
    <message>
        <source>A part of what you had copied is lost</source>
        <translation>Noe av det du hadde kopiert, gikk tapt</translation>
    </message>
    <message>
        <source>A part of Tulvane is missing: there is nothing to compute with.</source>
        <translation>En del av Tulvane mangler: det er ingenting å regne med.</translation>
    </message>
    <message>
        <source>A single key needs the Input Monitoring permission.</source>
        <translation>Én tast alene krever tilgang til å følge med på tastaturet.</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Om</translation>
    </message>
    <message>
        <source>Access was denied. Switch Tulvane on under Privacy &amp; Security › Microphone.</source>
        <translation>Tilgang ble avslått. Slå på Tulvane under Personvern › Mikrofon i innstillingene.</translation>
    </message>
    <message>
        <source>Accessibility</source>
        <translation>Tilgjengelighet</translation>
    </message>
    <message>
        <source>Accessibility API, then paste</source>
        <translation>Tilgjengelighets-API, ellers innliming</translation>
    </message>
    <message>
        <source>Accessibility access granted</source>
        <translation>Tilgjengelighetstilgang er gitt</translation>
    </message>
    <message>
        <source>Add a space after the text</source>
        <translation>Legg til et mellomrom etter teksten</translation>
    </message>
    <message>
        <source>Add names and jargon to your vocabulary</source>
        <translation>Legg til navn og fagord i ordlisten</translation>
    </message>
    <message>
        <source>All counters are deleted. Transcripts are never stored, so nothing else is affected.</source>
        <translation>Alle tellere slettes. Transkripsjoner lagres aldri, så ingenting annet berøres.</translation>
    </message>
    <message>
        <source>All set. Focus any text field and press **%1**.</source>
        <translation>Alt er klart. Sett markøren i et tekstfelt og trykk **%1**.</translation>
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
        <source>Allow Tulvane to use the microphone there.</source>
        <translation>La Tulvane bruke mikrofonen der.</translation>
    </message>
    <message>
        <source>Allow microphone access</source>
        <translation>Gi tilgang til mikrofonen</translation>
    </message>
    <message>
        <source>Already switched on? Reset &amp; grant again</source>
        <translation>Allerede slått på? Nullstill og gi på nytt</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Let Tulvane read the keyboard</source>
        <translation>La Tulvane lese tastaturet</translation>
    </message>
    <message>
        <source>No keyboard can be read on this desktop.</source>
        <translation>Ingen tastaturer kan leses på dette skrivebordet.</translation>
    </message>
    <message>
        <source>On this desktop a single key needs your leave to read the keyboard. Give it in the settings.</source>
        <translation>På dette skrivebordet må du la Tulvane lese tastaturet for å bruke en enkelttast. Slå det på i innstillingene.</translation>
    </message>
    <message>
        <source>The desktop gave Tulvane no key: it was declined, or is not possible. Try again, or bind the command “tulvane toggle” to a key in the desktop's own settings.</source>
        <translation>Skrivebordet ga ikke Tulvane noen tast: Det ble avslått, eller det går ikke. Prøv igjen, eller knytt kommandoen «tulvane toggle» til en tast i skrivebordets egne innstillinger.</translation>
    </message>
    <message>
        <source>This desktop keeps key bindings nowhere that Tulvane knows. Bind a key to “tulvane toggle” in its settings.</source>
        <translation>Dette skrivebordet har ingen tastesnarveier som Tulvane kjenner. Knytt en tast til «tulvane toggle» i innstillingene.</translation>
    </message>
    <message>
        <source>%1 already uses this key combination. Choose another one, or free it there.</source>
        <translation>%1 bruker allerede denne tastekombinasjonen. Velg en annen, eller frigjør den der.</translation>
    </message>
    <message>
        <source>The system's shortcut settings give Tulvane no key. Set one there, or choose another one here.</source>
        <translation>Systemets innstillinger for snarveier gir ikke Tulvane noen tast. Velg en der, eller velg en annen her.</translation>
    </message>
    <message>
        <source>Start or stop dictation</source>
        <translation>Start eller stopp diktering</translation>
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
        <source>App language</source>
        <translation>Programspråk</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Utseende</translation>
    </message>
    <message>
        <source>Audio is captured only while the hotkey is active, kept in memory, and transcribed on your Mac.</source>
        <translation>Lyd tas bare opp mens hurtigtasten er aktiv, holdes i minnet og skrives om til tekst på datamaskinen din.</translation>
    </message>
    <message>
        <source>Audio is recorded only while the hotkey is active and transcribed locally by NB-Whisper. No account, no cloud, no transcripts on disk.</source>
        <translation>Lyd tas bare opp mens hurtigtasten er aktiv, og transkriberes lokalt med NB-Whisper. Ingen konto, ingen sky, ingen transkripsjoner på disk.</translation>
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
        <translation>Tilbaketast</translation>
    </message>
    <message>
        <source>Backspace clears the field. To use fn or right ⌥ on its own, choose “Hold a single key” above.</source>
        <translation>Tilbaketasten tømmer feltet. Velg «Hold inne én tast» ovenfor for å bruke Fn eller høyre Alt alene.</translation>
    </message>
    <message>
        <source>Bar chart of words dictated per day for the last %1 days</source>
        <translation>Søylediagram over dikterte ord per dag de siste %1 dagene</translation>
    </message>
    <message>
        <source>Behaves like a normal app with a Dock icon and app menu. Clicking the Dock icon opens this window.</source>
        <translation>Oppfører seg som et vanlig program med en plass i oppgavelinjen.</translation>
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
        <source>Bokmål, nynorsk and English, with a vocabulary hint for the names and jargon you use.</source>
        <translation>Bokmål, nynorsk og engelsk, med en ordliste for navnene og faguttrykkene du bruker.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Avbryt</translation>
    </message>
    <message>
        <source>Cancel recording</source>
        <translation>Avbryt opptaket</translation>
    </message>
    <message>
        <source>Capitalise the first letter</source>
        <translation>Stor forbokstav</translation>
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
        <source>Choose a bar to see its day.</source>
        <translation>Velg en søyle for å se dagen.</translation>
    </message>
    <message>
        <source>Choose a hotkey</source>
        <translation>Velg en hurtigtast</translation>
    </message>
    <message>
        <source>Clean, punctuated text. The best choice for everyday dictation – about 3× smaller than full precision with nearly identical accuracy.</source>
        <translation>Ren tekst med tegnsetting. Det beste valget til daglig diktering – omtrent 3× mindre enn full presisjon og nesten like nøyaktig.</translation>
    </message>
    <message>
        <source>Clear the key combination</source>
        <translation>Fjern tastekombinasjonen</translation>
    </message>
    <message>
        <source>Click the field, then press the whole combination at once, for example ⌥ Space or ⌃⌥ D.</source>
        <translation>Klikk i feltet og trykk hele kombinasjonen på én gang, for eksempel Alt + mellomrom eller Ctrl + Alt + D.</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Lukk</translation>
    </message>
    <message>
        <source>Copied</source>
        <translation>Kopiert</translation>
    </message>
    <message>
        <source>Copied to clipboard</source>
        <translation>Kopiert til utklippstavlen</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopier</translation>
    </message>
    <message>
        <source>Copy to clipboard only</source>
        <translation>Bare kopiering</translation>
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
        <translation>Slett</translation>
    </message>
    <message>
        <source>Delete model file</source>
        <translation>Slette modellfilen?</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Detaljer</translation>
    </message>
    <message>
        <source>Dictate today to start a streak</source>
        <translation>Dikter i dag for å starte en rekke</translation>
    </message>
    <message>
        <source>Dictate your first sentence</source>
        <translation>Dikter din første setning</translation>
    </message>
    <message>
        <source>Dictation</source>
        <translation>Diktering</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Ferdig</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>Ned</translation>
    </message>
    <message>
        <source>Download</source>
        <translation>Last ned</translation>
    </message>
    <message>
        <source>Download a speech model</source>
        <translation>Last ned en talemodell</translation>
    </message>
    <message>
        <source>Downloaded %1, expected about %2. The download may be incomplete.</source>
        <translation>Lastet ned %1, forventet omtrent %2. Nedlastingen kan være ufullstendig.</translation>
    </message>
    <message>
        <source>Downloading – %1</source>
        <translation>Laster ned – %1</translation>
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
        <source>Error: %1</source>
        <translation>Feil: %1</translation>
    </message>
    <message>
        <source>Escape</source>
        <translation>Esc</translation>
    </message>
    <message>
        <source>Everything stays on your Mac</source>
        <translation>Alt blir på datamaskinen din</translation>
    </message>
    <message>
        <source>Fast</source>
        <translation>Rask</translation>
    </message>
    <message>
        <source>Feedback</source>
        <translation>Lyd og visning</translation>
    </message>
    <message>
        <source>Feedback sound</source>
        <translation>Lydsignal</translation>
    </message>
    <message>
        <source>Finish setup</source>
        <translation>Fullfør oppsettet</translation>
    </message>
    <message>
        <source>Floating pill at the bottom of the screen while you dictate.</source>
        <translation>Flytende pille nederst på skjermen mens du dikterer.</translation>
    </message>
    <message>
        <source>Free %1</source>
        <translation>Frigjør %1</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>Frigjør plass</translation>
    </message>
    <message>
        <source>Full precision (f16)</source>
        <translation>Full presisjon (f16)</translation>
    </message>
    <message>
        <source>Get the most out of Tulvane</source>
        <translation>Få mest mulig ut av Tulvane</translation>
    </message>
    <message>
        <source>Good afternoon</source>
        <translation>God ettermiddag</translation>
    </message>
    <message>
        <source>Good evening</source>
        <translation>God kveld</translation>
    </message>
    <message>
        <source>Good morning</source>
        <translation>God morgen</translation>
    </message>
    <message>
        <source>Grant Accessibility so text can be typed for you</source>
        <translation>Gi tilgjengelighetstilgang, så teksten kan skrives for deg</translation>
    </message>
    <message>
        <source>Granted</source>
        <translation>Gitt</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Skjul</translation>
    </message>
    <message>
        <source>Hide checklist</source>
        <translation>Skjul listen</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Historikk</translation>
    </message>
    <message>
        <source>Hold a single key</source>
        <translation>Hold inne én tast</translation>
    </message>
    <message>
        <source>Hold down</source>
        <translation>Hold inne</translation>
    </message>
    <message>
        <source>Hold to talk</source>
        <translation>Hold inne for å snakke</translation>
    </message>
    <message>
        <source>Hold to talk, or tap briefly to start and tap again to stop.</source>
        <translation>Hold inne for å snakke, eller trykk kort for å starte og en gang til for å stoppe.</translation>
    </message>
    <message>
        <source>Hold to talk, tap to toggle</source>
        <translation>Hold inne for å snakke, trykk for å slå av og på</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Hjem</translation>
    </message>
    <message>
        <source>Hotkey</source>
        <translation>Hurtigtast</translation>
    </message>
    <message>
        <source>Hotkey mode</source>
        <translation>Slik virker hurtigtasten</translation>
    </message>
    <message>
        <source>Hotkey, speech, text insertion and how the app shows up on your Mac.</source>
        <translation>Hurtigtast, tale, innsetting av tekst og hvordan programmet viser seg på datamaskinen.</translation>
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
        <source>How it works</source>
        <translation>Slik virker det</translation>
    </message>
    <message>
        <source>How much you dictate, how fast you speak, and the time it saves you versus typing.</source>
        <translation>Hvor mye du dikterer, hvor fort du snakker, og hvor mye tid du sparer sammenlignet med å skrive.</translation>
    </message>
    <message>
        <source>How you start and stop dictation.</source>
        <translation>Slik starter og stopper du dikteringen.</translation>
    </message>
    <message>
        <source>How “time saved” is estimated</source>
        <translation>Slik beregnes «spart tid»</translation>
    </message>
    <message>
        <source>Input Monitoring granted</source>
        <translation>Tilgang til tastaturet er gitt</translation>
    </message>
    <message>
        <source>Insert</source>
        <translation>Insert</translation>
    </message>
    <message>
        <source>Insert text by</source>
        <translation>Innsetting</translation>
    </message>
    <message>
        <source>Inserting…</source>
        <translation>Setter inn …</translation>
    </message>
    <message>
        <source>It must include ⌘, ⌃ or ⌥, or be a function key such as F5. Letters alone, ⇧ alone and fn alone are not accepted – the field just beeps.</source>
        <translation>Den må inneholde Super, Ctrl eller Alt, eller være en funksjonstast som F5. Bokstaver alene, Shift alene og Fn alene godtas ikke – feltet bare piper.</translation>
    </message>
    <message>
        <source>It was put on the clipboard: paste it where you want it.</source>
        <translation>Den ble lagt på utklippstavlen: lim den inn der du vil ha den.</translation>
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
        <source>Key combination</source>
        <translation>Tastekombinasjon</translation>
    </message>
    <message>
        <source>Keypad %1</source>
        <translation>Talltastatur %1</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Språk</translation>
    </message>
    <message>
        <source>Language &amp; appearance</source>
        <translation>Språk og utseende</translation>
    </message>
    <message>
        <source>Last %1 days</source>
        <translation>Siste %1 dager</translation>
    </message>
    <message>
        <source>Launch at login</source>
        <translation>Start ved innlogging</translation>
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
        <source>Lets Tulvane type the transcribed text into whatever app you are using (it presses ⌘V for you).</source>
        <translation>Lar Tulvane skrive teksten i programmet du bruker (trykker Ctrl+V for deg).</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Lyst</translation>
    </message>
    <message>
        <source>Light, dark, or whatever the Mac is using.</source>
        <translation>Lyst, mørkt eller det samme som skrivebordet bruker.</translation>
    </message>
    <message>
        <source>Listening…</source>
        <translation>Lytter …</translation>
    </message>
    <message>
        <source>Listens only while the key is held. A very short tap cancels.</source>
        <translation>Lytter bare mens tasten holdes inne. Et helt kort trykk avbryter.</translation>
    </message>
    <message>
        <source>Loaded in memory</source>
        <translation>Lastet i minnet</translation>
    </message>
    <message>
        <source>Loading model…</source>
        <translation>Laster inn modell …</translation>
    </message>
    <message>
        <source>Longest single dictation before recording stops by itself.</source>
        <translation>Den lengste dikteringen før opptaket stopper av seg selv.</translation>
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
        <source>Menu-bar only. Use the microphone icon in the menu bar to reach this window and quit.</source>
        <translation>Bare i systemstatusfeltet. Bruk mikrofonikonet der for å nå dette vinduet og for å avslutte.</translation>
    </message>
    <message>
        <source>Menus, settings and messages. The app restarts when you change this.</source>
        <translation>Menyer, innstillinger og meldinger. Programmet starter på nytt når du endrer dette.</translation>
    </message>
    <message>
        <source>Microphone</source>
        <translation>Mikrofon</translation>
    </message>
    <message>
        <source>Microphone access granted</source>
        <translation>Tilgang til mikrofonen er gitt</translation>
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
        <source>Models</source>
        <translation>Modeller</translation>
    </message>
    <message>
        <source>Models are downloaded once from the model hub and stored in Application Support.</source>
        <translation>Modeller lastes ned én gang fra modellarkivet og lagres i datamappen din.</translation>
    </message>
    <message>
        <source>Most people type around 40 words per minute and speak around 150–160, so dictating is roughly 4× faster. The estimate is the time typing the same words would take at your typing speed, minus the time you actually spent speaking.</source>
        <translation>De fleste skriver rundt 40 ord i minuttet og snakker rundt 150–160, så diktering er omtrent fire ganger så raskt. Anslaget er tiden det ville tatt å skrive de samme ordene med din skrivefart, minus tiden du faktisk brukte på å snakke.</translation>
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
        <source>NB-Whisper Medium from the National Library of Norway runs fully on-device. One-time download of about 540 MB.</source>
        <translation>NB-Whisper Medium fra Nasjonalbiblioteket kjører i sin helhet på datamaskinen. Lastes ned én gang, omtrent 540 MB.</translation>
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
        <source>NB-Whisper is trained on Norwegian, but handles English too.</source>
        <translation>NB-Whisper er trent på norsk, men takler engelsk også.</translation>
    </message>
    <message>
        <source>Names, products or jargon you use often. Given to the model as context so it spells them right. Keep it short.</source>
        <translation>Navn, produkter eller faguttrykk du bruker ofte. Modellen får dem som kontekst, så den staver dem riktig. Hold listen kort.</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Neste side</translation>
    </message>
    <message>
        <source>No X display could be reached.</source>
        <translation>Fikk ikke kontakt med noen X-skjerm.</translation>
    </message>
    <message>
        <source>No dictation in memory has these words.</source>
        <translation>Ingen diktering i minnet har disse ordene.</translation>
    </message>
    <message>
        <source>No dictations yet</source>
        <translation>Ingen dikteringer ennå</translation>
    </message>
    <message>
        <source>No hotkey set</source>
        <translation>Ingen hurtigtast valgt</translation>
    </message>
    <message>
        <source>No hotkey yet –</source>
        <translation>Ingen hurtigtast ennå –</translation>
    </message>
    <message>
        <source>No microphone is available.</source>
        <translation>Ingen mikrofon er tilgjengelig.</translation>
    </message>
    <message>
        <source>No model needs it any more. What is left alone for 30 days is removed.</source>
        <translation>Ingen modell trenger dette lenger. Det som ligger urørt i 30 dager, fjernes.</translation>
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
        <source>Nordlys Energi, Ingrid Haugland, Q3</source>
        <translation>Nordlys Energi, Ingrid Haugland, 3. kvartal</translation>
    </message>
    <message>
        <source>Norsk</source>
        <translation>Norsk</translation>
    </message>
    <message>
        <source>Norwegian first</source>
        <translation>Norsk først</translation>
    </message>
    <message>
        <source>Not copied</source>
        <translation>Ikke kopiert</translation>
    </message>
    <message>
        <source>Not downloaded</source>
        <translation>Ikke lastet ned</translation>
    </message>
    <message>
        <source>Not granted</source>
        <translation>Ikke gitt</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Fant ingenting</translation>
    </message>
    <message>
        <source>Nothing heard</source>
        <translation>Hørte ingenting</translation>
    </message>
    <message>
        <source>Nothing recognised</source>
        <translation>Gjenkjente ingenting</translation>
    </message>
    <message>
        <source>Nothing yet – download the selected model to start dictating.</source>
        <translation>Ingenting ennå – last ned den valgte modellen for å begynne å diktere.</translation>
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
        <source>On-screen indicator</source>
        <translation>Indikator på skjermen</translation>
    </message>
    <message>
        <source>One day down, many more ahead</source>
        <translation>Første dag i boks, mange flere i vente</translation>
    </message>
    <message>
        <source>Only counts are saved on this Mac – never the text you dictate.</source>
        <translation>Bare antall lagres på denne datamaskinen – aldri teksten du dikterer.</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Åpne</translation>
    </message>
    <message>
        <source>Open Accessibility settings…</source>
        <translation>Åpne tilgjengelighetsinnstillingene …</translation>
    </message>
    <message>
        <source>Open Input Monitoring settings…</source>
        <translation>Åpne innstillingene for tastaturtilgang …</translation>
    </message>
    <message>
        <source>Open Microphone settings…</source>
        <translation>Åpne mikrofoninnstillingene …</translation>
    </message>
    <message>
        <source>Open Tulvane</source>
        <translation>Åpne Tulvane</translation>
    </message>
    <message>
        <source>Optional</source>
        <translation>Valgfritt</translation>
    </message>
    <message>
        <source>Other variants (full precision, verbatim, semantic) are available under Models in the main window.</source>
        <translation>Andre varianter (full presisjon, ordrett, semantisk) finnes under Modeller i hovedvinduet.</translation>
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
        <source>Pages</source>
        <translation>Sider</translation>
    </message>
    <message>
        <source>Paste (recommended)</source>
        <translation>Innliming (anbefalt)</translation>
    </message>
    <message>
        <source>Runs on %1</source>
        <translation>Kjører på %1</translation>
    </message>
    <message>
        <source>Runs on the processor</source>
        <translation>Kjører på prosessoren</translation>
    </message>
    <message>
        <source>Runs on the processor, because the graphics card failed</source>
        <translation>Kjører på prosessoren, fordi grafikkortet sviktet</translation>
    </message>
    <message>
        <source>The graphics card failed</source>
        <translation>Grafikkortet sviktet</translation>
    </message>
    <message>
        <source>This desktop gives programs no hotkeys. Bind the command “tulvane toggle” to a key in the desktop's own configuration.</source>
        <translation>Dette skrivebordet gir ikke programmer hurtigtaster. Knytt kommandoen «tulvane toggle» til en tast i skrivebordets eget oppsett.</translation>
    </message>
    <message>
        <source>This desktop does not let Tulvane paste into other programs.</source>
        <translation>Dette skrivebordet lar ikke Tulvane lime inn i andre programmer.</translation>
    </message>
    <message>
        <source>A Wayland desktop shows no program the keys of others, so single keys cannot be watched.</source>
        <translation>Et Wayland-skrivebord viser ikke noe program tastene til andre, så enkelttaster kan ikke følges med på.</translation>
    </message>
    <message>
        <source>KDE does not let Tulvane press keys: it has not found Tulvane's desktop entry.</source>
        <translation>KDE lar ikke Tulvane trykke taster: det har ikke funnet skrivebordsoppføringen til Tulvane.</translation>
    </message>
    <message>
        <source>Choose a key combination: this desktop has it written into its own keyboard settings.</source>
        <translation>Velg en tastekombinasjon: dette skrivebordet skriver den inn i sine egne tastaturinnstillinger.</translation>
    </message>
    <message>
        <source>This desktop lets Tulvane press keys only once you have allowed it in a dialog of its own.</source>
        <translation>Dette skrivebordet lar Tulvane trykke taster først når du har tillatt det i en dialog som skrivebordet viser.</translation>
    </message>
    <message>
        <source>Tulvane's setup guide brings the dialog; some desktops ask again at each start.</source>
        <translation>Oppsettsveiviseren i Tulvane henter fram dialogen; noen skrivebord spør på nytt hver gang Tulvane starter.</translation>
    </message>
    <message>
        <source>In the dialog, switch on “Allow Remote Interaction” and choose “Share”. While it is allowed, a sign for remote control stands in the top bar.</source>
        <translation>Slå på bryteren for fjernstyring («Allow Remote Interaction») i dialogen, og velg å dele («Share»). Så lenge det er tillatt, står det et tegn for fjernstyring i topplinjen.</translation>
    </message>
    <message>
        <source>The dialog speaks of remote control: allow the keyboard.</source>
        <translation>Dialogen handler om fjernstyring: tillat tastaturet.</translation>
    </message>
    <message>
        <source>Texts are left on the clipboard: paste them yourself, or let the desktop ask again.</source>
        <translation>Tekstene ligger på utklippstavlen: lim dem inn selv, eller la skrivebordet spørre på nytt.</translation>
    </message>
    <message>
        <source>This desktop asks you once, in a dialog of its own, whether Tulvane may press keys.</source>
        <translation>Dette skrivebordet spør deg én gang, i en egen dialog, om Tulvane får trykke taster.</translation>
    </message>
    <message>
        <source>This desktop asks you in a dialog of its own whether Tulvane may press keys, and asks again at each start of Tulvane.</source>
        <translation>Dette skrivebordet spør deg i en egen dialog om Tulvane får trykke taster, og spør på nytt hver gang Tulvane starter.</translation>
    </message>
    <message>
        <source>The desktop is asking you now whether Tulvane may press keys.</source>
        <translation>Skrivebordet spør deg nå om Tulvane får trykke taster.</translation>
    </message>
    <message>
        <source>You have not allowed Tulvane to press keys.</source>
        <translation>Du har ikke tillatt at Tulvane trykker taster.</translation>
    </message>
    <message>
        <source>You have allowed Tulvane remote control, but not of the keyboard.</source>
        <translation>Du har tillatt at Tulvane fjernstyrer, men ikke tastaturet.</translation>
    </message>
    <message>
        <source>The desktop no longer lets Tulvane press keys: its remote control was ended.</source>
        <translation>Skrivebordet lar ikke lenger Tulvane trykke taster: fjernstyringen ble avsluttet.</translation>
    </message>
    <message>
        <source>The desktop could not ask you whether Tulvane may press keys.</source>
        <translation>Skrivebordet kunne ikke spørre deg om Tulvane får trykke taster.</translation>
    </message>
    <message>
        <source>Let Tulvane press keys…</source>
        <translation>La Tulvane trykke taster …</translation>
    </message>
    <message>
        <source>GNOME does not let Tulvane press keys: its service for remote control does not answer.</source>
        <translation>GNOME lar ikke Tulvane trykke taster: tjenesten for fjernstyring svarer ikke.</translation>
    </message>
    <message>
        <source>The text is left on the clipboard: paste it yourself. Log in again to try anew.</source>
        <translation>Teksten ligger på utklippstavlen: lim den inn selv. Logg inn på nytt for å prøve igjen.</translation>
    </message>
    <message>
        <source>Install Tulvane for all users, or log in again.</source>
        <translation>Installer Tulvane for alle brukere, eller logg inn på nytt.</translation>
    </message>
    <message>
        <source>Pasting into other programs is not supported in a Wayland session yet.</source>
        <translation>Innliming i andre programmer støttes ikke i en Wayland-økt ennå.</translation>
    </message>
    <message>
        <source>Period</source>
        <translation>Periode</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>Tillatelser</translation>
    </message>
    <message>
        <source>Play a tone when recording starts and stops.</source>
        <translation>Spill en tone når opptaket starter og stopper.</translation>
    </message>
    <message>
        <source>Press</source>
        <translation>Trykk</translation>
    </message>
    <message>
        <source>Press a hotkey, speak Norwegian, and the text appears where your cursor is. Everything runs on your Mac.</source>
        <translation>Trykk på en hurtigtast, snakk norsk, og teksten kommer der markøren står. Alt skjer på datamaskinen din.</translation>
    </message>
    <message>
        <source>Press once to start listening, press again to stop and insert the text.</source>
        <translation>Trykk én gang for å begynne å lytte, og en gang til for å stoppe og sette inn teksten.</translation>
    </message>
    <message>
        <source>Press shortcut</source>
        <translation>Trykk snarveien</translation>
    </message>
    <message>
        <source>Press the hotkey, say something, and your first numbers show up here.</source>
        <translation>Trykk på hurtigtasten og si noe, så dukker de første tallene dine opp her.</translation>
    </message>
    <message>
        <source>Press the hotkey, say something, and your transcripts show up here.</source>
        <translation>Trykk på hurtigtasten og si noe, så dukker transkripsjonene dine opp her.</translation>
    </message>
    <message>
        <source>Previous page</source>
        <translation>Forrige side</translation>
    </message>
    <message>
        <source>Private</source>
        <translation>Privat</translation>
    </message>
    <message>
        <source>Private by design</source>
        <translation>Privat fra grunnen av</translation>
    </message>
    <message>
        <source>Private, on-device Norwegian dictation for macOS. Press a hotkey, speak, and the text appears where your cursor is – in any app.</source>
        <translation>Privat norsk diktering som kjører på din egen maskin. Trykk på en hurtigtast, snakk, og teksten dukker opp der markøren står – i alle programmer.</translation>
    </message>
    <message>
        <source>Put whatever you had copied back after pasting.</source>
        <translation>Legg tilbake det du hadde kopiert, etter innlimingen.</translation>
    </message>
    <message>
        <source>Quantised (q5_0)</source>
        <translation>Kvantisert (q5_0)</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Avslutt</translation>
    </message>
    <message>
        <source>Quit Tulvane</source>
        <translation>Avslutt Tulvane</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Klar</translation>
    </message>
    <message>
        <source>Ready · %1</source>
        <translation>Klar · %1</translation>
    </message>
    <message>
        <source>Recent dictations</source>
        <translation>Siste dikteringer</translation>
    </message>
    <message>
        <source>Recommended</source>
        <translation>Anbefalt</translation>
    </message>
    <message>
        <source>Record shortcut</source>
        <translation>Velg snarvei</translation>
    </message>
    <message>
        <source>Records your voice only while the hotkey is active. Audio stays on this Mac and is never uploaded.</source>
        <translation>Tar opp stemmen din bare mens hurtigtasten er aktiv. Lyden blir på denne datamaskinen og lastes aldri opp.</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Nullstill</translation>
    </message>
    <message>
        <source>Reset &amp; grant again</source>
        <translation>Nullstill og gi på nytt</translation>
    </message>
    <message>
        <source>Reset all statistics?</source>
        <translation>Nullstille all statistikk?</translation>
    </message>
    <message>
        <source>Reset statistics…</source>
        <translation>Nullstill statistikk …</translation>
    </message>
    <message>
        <source>Restore clipboard</source>
        <translation>Gjenopprett utklippstavlen</translation>
    </message>
    <message>
        <source>Retry</source>
        <translation>Prøv igjen</translation>
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
        <translation>Høyre Shift</translation>
    </message>
    <message>
        <source>Right ⌃ Control</source>
        <translation>Høyre Ctrl</translation>
    </message>
    <message>
        <source>Right ⌘ Command</source>
        <translation>Høyre Super</translation>
    </message>
    <message>
        <source>Right ⌥ Option</source>
        <translation>Høyre Alt (Alt Gr)</translation>
    </message>
    <message>
        <source>Same model at full precision. Marginally more accurate on difficult audio, three times the download and memory.</source>
        <translation>Samme modell med full presisjon. Litt mer nøyaktig på vanskelig lyd, tre ganger så stor nedlasting og minnebruk.</translation>
    </message>
    <message>
        <source>Search the history</source>
        <translation>Søk i historikken</translation>
    </message>
    <message>
        <source>Selected</source>
        <translation>Valgt</translation>
    </message>
    <message>
        <source>Set up Tulvane</source>
        <translation>Sett opp Tulvane</translation>
    </message>
    <message>
        <source>Set up in four steps</source>
        <translation>Kom i gang i fire steg</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Innstillinger</translation>
    </message>
    <message>
        <source>Setup guide</source>
        <translation>Oppsettsveiviser</translation>
    </message>
    <message>
        <source>Setup required</source>
        <translation>Oppsett gjenstår</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>Shift</translation>
    </message>
    <message>
        <source>Show all</source>
        <translation>Vis alt</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>Vis i oppgavelinjen</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Vis i filbehandleren</translation>
    </message>
    <message>
        <source>Show less</source>
        <translation>Vis mindre</translation>
    </message>
    <message>
        <source>Sounds</source>
        <translation>Lyder</translation>
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
        <source>Speech</source>
        <translation>Tale</translation>
    </message>
    <message>
        <source>Speech model</source>
        <translation>Talemodell</translation>
    </message>
    <message>
        <source>Speech model installed</source>
        <translation>Talemodellen er installert</translation>
    </message>
    <message>
        <source>Speech models</source>
        <translation>Talemodeller</translation>
    </message>
    <message>
        <source>Speech recognition by NB-Whisper (Nasjonalbiblioteket, Apache-2.0) running on whisper.cpp (MIT), Metal-accelerated. Nothing leaves your Mac.</source>
        <translation>Talegjenkjenning med NB-Whisper (Nasjonalbiblioteket, Apache-2.0) på whisper.cpp (MIT). Ingenting forlater datamaskinen din.</translation>
    </message>
    <message>
        <source>Start Tulvane from your desktop session, where DISPLAY is set.</source>
        <translation>Start Tulvane fra skrivebordsøkten, der DISPLAY er satt.</translation>
    </message>
    <message>
        <source>Start dictation</source>
        <translation>Start diktering</translation>
    </message>
    <message>
        <source>Start the X server with XTEST. Until then the text is left on the clipboard.</source>
        <translation>Start X-tjeneren med XTEST. Inntil da blir teksten liggende på utklippstavlen.</translation>
    </message>
    <message>
        <source>Statistics</source>
        <translation>Statistikk</translation>
    </message>
    <message>
        <source>Stop automatically</source>
        <translation>Stopp automatisk</translation>
    </message>
    <message>
        <source>Stop dictation</source>
        <translation>Stopp diktering</translation>
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
        <source>Text</source>
        <translation>Tekst</translation>
    </message>
    <message>
        <source>That's %1× faster than typing</source>
        <translation>Det er %1× raskere enn å skrive</translation>
    </message>
    <message>
        <source>The file cannot be read: %1</source>
        <translation>Filen kan ikke leses: %1</translation>
    </message>
    <message>
        <source>The file is damaged, or no speech model: %1</source>
        <translation>Filen er skadet eller er ingen talemodell: %1</translation>
    </message>
    <message>
        <source>The program that you copied it in did not hand it over in time. Copy it again.</source>
        <translation>Programmet du kopierte det i, leverte det ikke fra seg i tide. Kopier det på nytt.</translation>
    </message>
    <message>
        <source>The speech library says: %1</source>
        <translation>Talebiblioteket sier: %1</translation>
    </message>
    <message>
        <source>The speech model does not know the language “%1”.</source>
        <translation>Talemodellen kan ikke språket «%1».</translation>
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
        <source>The last dictation could not be transcribed</source>
        <translation>Den siste dikteringen kunne ikke transkriberes</translation>
    </message>
    <message>
        <source>The last text was not inserted</source>
        <translation>Den siste teksten ble ikke satt inn</translation>
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
        <source>The model file will be removed from disk. You can download it again later.</source>
        <translation>Modellfilen blir fjernet fra disken. Du kan laste den ned igjen senere.</translation>
    </message>
    <message>
        <source>The model usually does this itself; off keeps its output as is.</source>
        <translation>Modellen gjør vanligvis dette selv; slått av beholdes teksten slik den er.</translation>
    </message>
    <message>
        <source>The recording is kept in memory until you make the next one.</source>
        <translation>Opptaket ligger i minnet til du gjør det neste.</translation>
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
        <source>The settings file was damaged while Tulvane was running. It was set aside as %1, and the settings in use were stored again.</source>
        <translation>Innstillingsfilen ble skadet mens Tulvane var i gang. Den er lagt til side som %1, og innstillingene som gjelder, er lagret på nytt.</translation>
    </message>
    <message>
        <source>The settings were not read as they were stored</source>
        <translation>Innstillingene ble ikke lest slik de var lagret</translation>
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
        <source>Programs copy or paste with this key combination, and dictated texts are pasted.</source>
        <translation>Programmer kopierer eller limer inn med denne tastekombinasjonen, og dikterte tekster limes inn.</translation>
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
        <source>This desktop shows no icon for Tulvane. Start it again to reach this window; you can quit below.</source>
        <translation>Dette skrivebordet viser ikke noe ikon for Tulvane. Start det på nytt for å nå dette vinduet; du kan avslutte nedenfor.</translation>
    </message>
    <message>
        <source>This desktop tells programs of no single key, and the system does not let Tulvane read the keyboard.</source>
        <translation>Dette skrivebordet melder ikke enkelttaster til programmer, og systemet lar ikke Tulvane lese tastaturet.</translation>
    </message>
    <message>
        <source>This desktop tells programs of no single key. Tulvane can read the keyboard itself: then it sees every key that you press in any program, passwords too. It looks for the single key alone, and keeps and sends nothing.</source>
        <translation>Dette skrivebordet melder ikke enkelttaster til programmer. Tulvane kan lese selve tastaturet: Da ser det hver tast du trykker i alle programmer, også passord. Det ser bare etter enkelttasten, og verken lagrer eller sender noe.</translation>
    </message>
    <message>
        <source>This needs %1 MB of memory, and %2 MB are available.</source>
        <translation>Dette krever %1 MB minne, og %2 MB er ledig.</translation>
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
        <source>To do</source>
        <translation>Gjenstår</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>I dag</translation>
    </message>
    <message>
        <source>Today: %1 words · ~%2 saved</source>
        <translation>I dag: %1 ord · ca. %2 spart</translation>
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
        <source>Try again</source>
        <translation>Prøv igjen</translation>
    </message>
    <message>
        <source>Try hold-to-talk with a single key</source>
        <translation>Prøv å holde inne én tast mens du snakker</translation>
    </message>
    <message>
        <source>Tulvane</source>
        <translation>Tulvane</translation>
    </message>
    <message>
        <source>Tulvane may not watch the keyboard. Allow input monitoring in the privacy settings.</source>
        <translation>Tulvane får ikke følge med på tastaturet. Tillat overvåking av inndata i personverninnstillingene.</translation>
    </message>
    <message>
        <source>Turn on the switch next to Tulvane. If the switch is already on but this step stays “To do”, the entry belongs to an older build of the app – use “Reset &amp; grant again” and approve the prompt.</source>
        <translation>Slå på bryteren ved siden av Tulvane. Hvis bryteren allerede er på og dette steget likevel står som «Gjenstår», hører oppføringen til en eldre utgave av programmet – velg «Nullstill og gi på nytt» og godta spørsmålet.</translation>
    </message>
    <message>
        <source>Typing the same text would take</source>
        <translation>Å skrive den samme teksten ville tatt</translation>
    </message>
    <message>
        <source>Unfinished downloads hold %1</source>
        <translation>Uferdige nedlastinger tar %1</translation>
    </message>
    <message>
        <source>Until you start it again, the hotkey does nothing.</source>
        <translation>Hurtigtasten gjør ingenting før du starter Tulvane igjen.</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Opp</translation>
    </message>
    <message>
        <source>Use %1 instead</source>
        <translation>Bruk %1 i stedet</translation>
    </message>
    <message>
        <source>Use a key combination as the hotkey.</source>
        <translation>Bruk en tastekombinasjon som hurtigtast.</translation>
    </message>
    <message>
        <source>Use this if Tulvane is already switched on in System Settings but the permission still shows as missing (happens after updates).</source>
        <translation>Bruk denne hvis Tulvane allerede er slått på i systeminnstillingene, men tillatelsen fortsatt vises som manglende (skjer etter oppdateringer).</translation>
    </message>
    <message>
        <source>Use this model</source>
        <translation>Bruk denne modellen</translation>
    </message>
    <message>
        <source>Used to recognise and transcribe spoken Norwegian as accurately as possible. All variants are NB-Whisper Medium from the National Library of Norway and run fully on your Mac.</source>
        <translation>Brukes til å gjenkjenne norsk tale og skrive den ned så nøyaktig som mulig. Alle variantene er NB-Whisper Medium fra Nasjonalbiblioteket og kjører helt og holdent på datamaskinen din.</translation>
    </message>
    <message>
        <source>Verifying…</source>
        <translation>Kontrollerer …</translation>
    </message>
    <message>
        <source>Version </source>
        <translation>Versjon </translation>
    </message>
    <message>
        <source>View all</source>
        <translation>Vis alle</translation>
    </message>
    <message>
        <source>Vocabulary</source>
        <translation>Ordliste</translation>
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
        <source>Walks through permissions, model download and hotkey again.</source>
        <translation>Går gjennom tillatelser, nedlasting av modell og hurtigtast på nytt.</translation>
    </message>
    <message>
        <source>Welcome to Tulvane</source>
        <translation>Velkommen til Tulvane</translation>
    </message>
    <message>
        <source>What has arrived of unfinished downloads will be removed. A download then starts from the beginning.</source>
        <translation>Det som er kommet av uferdige nedlastinger, blir fjernet. En nedlasting starter da fra begynnelsen.</translation>
    </message>
    <message>
        <source>What the system uses can be changed in its keyboard settings.</source>
        <translation>Det systemet bruker, kan endres i tastaturinnstillingene.</translation>
    </message>
    <message>
        <source>Words</source>
        <translation>Ord</translation>
    </message>
    <message>
        <source>Words dictated</source>
        <translation>Dikterte ord</translation>
    </message>
    <message>
        <source>Words per day</source>
        <translation>Ord per dag</translation>
    </message>
    <message>
        <source>Works beside the key combination.</source>
        <translation>Virker ved siden av tastekombinasjonen.</translation>
    </message>
    <message>
        <source>Writes exactly what you said, including fillers and repetitions. For transcripts that must be word-for-word.</source>
        <translation>Skriver nøyaktig det du sa, med nølelyder og gjentakelser. For tekst som må være ordrett.</translation>
    </message>
    <message>
        <source>Your desktop's privacy settings keep Tulvane from the microphone.</source>
        <translation>Personverninnstillingene på skrivebordet holder Tulvane borte fra mikrofonen.</translation>
    </message>
    <message>
        <source>Your first words land here</source>
        <translation>De første ordene dine havner her</translation>
    </message>
    <message>
        <source>Your most recent transcripts. Kept in memory only – they disappear when the app quits and are never written to disk.</source>
        <translation>De siste transkripsjonene dine. De ligger bare i minnet – de forsvinner når programmet avsluttes, og skrives aldri til disk.</translation>
    </message>
    <message>
        <source>Your words are recognised on the processor now, which takes longer. The card is tried again at the next start.</source>
        <translation>Ordene dine gjenkjennes nå på prosessoren, og det tar lengre tid. Kortet prøves igjen ved neste oppstart.</translation>
    </message>
    <message>
        <source>Zero KB</source>
        <translation>0 kB</translation>
    </message>
    <message>
        <source>and speak into any text field</source>
        <translation>og snakk i et hvilket som helst tekstfelt</translation>
    </message>
    <message>
        <source>choose one in Settings</source>
        <translation>velg en i innstillingene</translation>
    </message>
    <message>
        <source>d MMM</source>
        <translation>d. MMM</translation>
    </message>
    <message>
        <source>fn / 🌐 Globe</source>
        <translation>Fn</translation>
    </message>
    <message>
        <source>vs. typing at %1 words/min</source>
        <translation>mot %1 ord/min på tastatur</translation>
    </message>
    <message>
        <source>whisper.cpp runs on the Apple Silicon GPU through Metal. A ten-second sentence transcribes in a few seconds.</source>
        <translation>whisper.cpp bruker prosessoren din fullt ut, og en grafikkbrikke der det finnes støtte for den. En setning på ti sekunder blir til tekst på noen få sekunder.</translation>
    </message>
    <message>
        <source>The recorded voice is missing.</source>
        <translation>Den innspilte stemmen mangler.</translation>
    </message>
    <message>
        <source>Hear how it works</source>
        <translation>Hør hvordan det virker</translation>
    </message>
    <message>
        <source>The voice is speaking…</source>
        <translation>Stemmen snakker …</translation>
    </message>
    <message>
        <source>A synthetic voice says a sentence, and the bundled demo model writes it. Nothing is downloaded.</source>
        <translation>En syntetisk stemme sier en setning, og den medfølgende demomodellen skriver den. Ingenting lastes ned.</translation>
    </message>
    <message>
        <source>Written by the demo model, which knows a synthetic voice and little else. The models to download understand people.</source>
        <translation>Skrevet av demomodellen, som kjenner en syntetisk stemme og lite annet. Modellene du kan laste ned, forstår mennesker.</translation>
    </message>
    <message>
        <source>“sudo usermod -aG input $USER” and a new login allow it, and let every program of yours read every key. A key combination needs none of this.</source>
        <translation>«sudo usermod -aG input $USER» og ny innlogging tillater det, og lar hvert program du kjører, lese hver tast. En tastekombinasjon trenger ikke noe av dette.</translation>
    </message>
    <message>
        <source>Say something…</source>
        <translation>Si noe …</translation>
    </message>
    <message>
        <source>The microphone hears you.</source>
        <translation>Mikrofonen hører deg.</translation>
    </message>
    <message>
        <source>Nothing was heard. Is it muted, or is another microphone meant?</source>
        <translation>Det kom ingen lyd. Er den dempet, eller er det en annen mikrofon du vil bruke?</translation>
    </message>
    <message>
        <source>Press %1, say a sentence, and press it again.</source>
        <translation>Trykk %1, si en setning, og trykk en gang til.</translation>
    </message>
    <message>
        <source>Hold down %1 while you say a sentence.</source>
        <translation>Hold inne %1 mens du sier en setning.</translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation>%1 s igjen</translation>
    </message>
    <message>
        <source>Try it here</source>
        <translation>Prøv her</translation>
    </message>
    <message>
        <source>Once the steps above are done</source>
        <translation>Når stegene over er gjort</translation>
    </message>
    <message>
        <source>Your words appear here.</source>
        <translation>Ordene dine kommer her.</translation>
    </message>
    <message>
        <source>That is all. It works like this in every text field.</source>
        <translation>Det var alt. Slik virker det i alle tekstfelt.</translation>
    </message>
    <message>
        <source>No microphone</source>
        <translation>Ingen mikrofon</translation>
    </message>
    <message>
        <source>Test the microphone</source>
        <translation>Test mikrofonen</translation>
    </message>
    <message>
        <source>Three seconds of its level. Nothing is kept.</source>
        <translation>Tre sekunder med lydnivå. Ingenting tas vare på.</translation>
    </message>
    <message>
        <source>%1 min %2 s</source>
        <translation>%1 min %2 s</translation>
    </message>
    <message>
        <source>%1/s, %2 left</source>
        <translation>%1/s, %2 igjen</translation>
    </message>
    <message>
        <source>%1 in memory</source>
        <translation>%1 i minnet</translation>
    </message>
    <message>
        <source>%1 s of speech in a second</source>
        <translation>%1 s tale i sekundet</translation>
    </message>
    <message>
        <source>measured here on %1</source>
        <translation>målt her %1</translation>
    </message>
    <message>
        <source>Yesterday</source>
        <translation>I går</translation>
    </message>
    <message>
        <source>Insert again</source>
        <translation>Sett inn igjen</translation>
    </message>
    <message>
        <source>Correct</source>
        <translation>Rett</translation>
    </message>
    <message>
        <source>Correct the text</source>
        <translation>Rett teksten</translation>
    </message>
    <message>
        <source>The selected model</source>
        <translation>Den valgte modellen</translation>
    </message>
    <message>
        <source>Sections</source>
        <translation>Deler</translation>
    </message>
</context>
</TS>
