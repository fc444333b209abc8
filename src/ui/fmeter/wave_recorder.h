#pragma once
// Sound from an input device into a 16-bit mono wave file: a header with no length at the
// start, the samples as they come, and the header again with the length at the end, so
// that a recording cut short by a crash is still a file the loaders open.

#include <QFile>
#include <QString>

class QIODevice;

namespace tahrir::ui {

class WaveRecorder {
public:
    // Opens `file` for samples at `rate`; false when it cannot be written.
    bool start(const QString& file, int rate);
    // Everything `input` has ready, appended; returns the loudest sample of it, 0 to 1.
    double append(QIODevice& input);
    double append(const QByteArray& samples);
    // Writes the final header and closes the file; false when it could not be written.
    bool finish();
    bool active() const { return m_file.isOpen(); }
    qint64 dataBytes() const { return m_dataBytes; }

private:
    QFile m_file;
    int m_rate = 0;
    qint64 m_dataBytes = 0;
    bool m_ok = true;
    QByteArray m_half; // a sample split between two blocks, for the level
};

} // namespace tahrir::ui
