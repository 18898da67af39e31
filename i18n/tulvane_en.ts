<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>tulvane</name>
    <message>
        <source> You can close this and come back any time from the menu-bar icon › Setup guide.</source>
        <translation> You can close this and come back any time from the tray icon › Setup guide.</translation>
    </message>
    <message>
        <source>Access was denied. Switch Tulvane on under Privacy &amp; Security › Microphone.</source>
        <translation>Access was denied. Switch Tulvane on under Privacy › Microphone in your desktop's settings.</translation>
    </message>
    <message>
        <source>Audio is captured only while the hotkey is active, kept in memory, and transcribed on your Mac.</source>
        <translation>Audio is captured only while the hotkey is active, kept in memory, and transcribed on your computer.</translation>
    </message>
    <message>
        <source>Backspace clears the field. To use fn or right ⌥ on its own, choose “Hold a single key” above.</source>
        <translation>Backspace clears the field. To use Fn or right Alt on its own, choose “Hold a single key” above.</translation>
    </message>
    <message>
        <source>Behaves like a normal app with a Dock icon and app menu. Clicking the Dock icon opens this window.</source>
        <translation>Behaves like a normal app with an entry in the task bar.</translation>
    </message>
    <message>
        <source>Click the field, then press the whole combination at once, for example ⌥ Space or ⌃⌥ D.</source>
        <translation>Click the field, then press the whole combination at once, for example Alt + Space or Ctrl + Alt + D.</translation>
    </message>
    <message>
        <source>Everything stays on your Mac</source>
        <translation>Everything stays on your computer</translation>
    </message>
    <message>
        <source>Hotkey, speech, text insertion and how the app shows up on your Mac.</source>
        <translation>Hotkey, speech, text insertion and how the app shows up on your desktop.</translation>
    </message>
    <message>
        <source>It must include ⌘, ⌃ or ⌥, or be a function key such as F5. Letters alone, ⇧ alone and fn alone are not accepted – the field just beeps.</source>
        <translation>It must include Super, Ctrl or Alt, or be a function key such as F5. Letters alone, Shift alone and Fn alone are not accepted – the field just beeps.</translation>
    </message>
    <message>
        <source>Lets Tulvane type the transcribed text into whatever app you are using (it presses ⌘V for you).</source>
        <translation>Lets Tulvane type the transcribed text into whatever app you are using (it presses Ctrl+V for you).</translation>
    </message>
    <message>
        <source>Light, dark, or whatever the Mac is using.</source>
        <translation>Light, dark, or whatever the desktop is using.</translation>
    </message>
    <message>
        <source>Menu-bar only. Use the microphone icon in the menu bar to reach this window and quit.</source>
        <translation>System tray only. Use the microphone icon in the tray to reach this window and quit.</translation>
    </message>
    <message>
        <source>Models are downloaded once from the model hub and stored in Application Support.</source>
        <translation>Models are downloaded once from the model hub and stored in your data folder.</translation>
    </message>
    <message>
        <source>Only counts are saved on this Mac – never the text you dictate.</source>
        <translation>Only counts are saved on this computer – never the text you dictate.</translation>
    </message>
    <message>
        <source>Press a hotkey, speak Norwegian, and the text appears where your cursor is. Everything runs on your Mac.</source>
        <translation>Press a hotkey, speak Norwegian, and the text appears where your cursor is. Everything runs on your computer.</translation>
    </message>
    <message>
        <source>Private, on-device Norwegian dictation for macOS. Press a hotkey, speak, and the text appears where your cursor is – in any app.</source>
        <translation>Private, on-device Norwegian dictation. Press a hotkey, speak, and the text appears where your cursor is – in any app.</translation>
    </message>
    <message>
        <source>Records your voice only while the hotkey is active. Audio stays on this Mac and is never uploaded.</source>
        <translation>Records your voice only while the hotkey is active. Audio stays on this computer and is never uploaded.</translation>
    </message>
    <message>
        <source>Right ⇧ Shift</source>
        <translation>Right Shift</translation>
    </message>
    <message>
        <source>Right ⌃ Control</source>
        <translation>Right Ctrl</translation>
    </message>
    <message>
        <source>Right ⌘ Command</source>
        <translation>Right Super</translation>
    </message>
    <message>
        <source>Right ⌥ Option</source>
        <translation>Right Alt (AltGr)</translation>
    </message>
    <message>
        <source>Show in Dock</source>
        <translation>Show in task bar</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Show in file manager</translation>
    </message>
    <message>
        <source>Speech recognition by NB-Whisper (Nasjonalbiblioteket, Apache-2.0) running on whisper.cpp (MIT), Metal-accelerated. Nothing leaves your Mac.</source>
        <translation>Speech recognition by NB-Whisper (Nasjonalbiblioteket, Apache-2.0) running on whisper.cpp (MIT). Nothing leaves your computer.</translation>
    </message>
    <message>
        <source>Use this if Tulvane is already switched on in System Settings but the permission still shows as missing (happens after updates).</source>
        <translation>Use this if Tulvane is already switched on in your desktop's settings but the permission still shows as missing (happens after updates).</translation>
    </message>
    <message>
        <source>Used to recognise and transcribe spoken Norwegian as accurately as possible. All variants are NB-Whisper Medium from the National Library of Norway and run fully on your Mac.</source>
        <translation>Used to recognise and transcribe spoken Norwegian as accurately as possible. All variants are NB-Whisper Medium from the National Library of Norway and run fully on your computer.</translation>
    </message>
    <message>
        <source>fn / 🌐 Globe</source>
        <translation>Fn</translation>
    </message>
    <message>
        <source>whisper.cpp runs on the Apple Silicon GPU through Metal. A ten-second sentence transcribes in a few seconds.</source>
        <translation>whisper.cpp makes full use of your processor, and of a graphics card where it is supported. A ten-second sentence transcribes in a few seconds.</translation>
    </message>
</context>
</TS>
