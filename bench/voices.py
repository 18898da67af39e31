"""The speech that measurements of transcription share."""
import wave

LENGTHS = (1, 3, 8, 30)


def voices(build, folder):
    """Sound files of exactly these lengths, by their seconds: one sentence over and over, the last one cut off. `build`:
    the folder of a build, where the bundled sentence lies."""
    with wave.open(str(build / "share/tulvane/speech/nb.wav")) as sound:
        form, spoken = sound.getparams(), sound.readframes(sound.getnframes())
    files = {}
    for seconds in LENGTHS:
        size = seconds * form.framerate * form.sampwidth
        files[seconds] = folder / f"{seconds}.wav"
        with wave.open(str(files[seconds]), "wb") as sound:
            sound.setparams(form)
            sound.writeframes((spoken * (size // len(spoken) + 1))[:size])
    return files
