#include "ui/fmeter/wave_recorder.h"

#include <QIODevice>
#include <QtEndian>
#include <algorithm>
#include <cstdlib>
#include <limits>

#include "app/recording_work.h"
#include "transcribe/wave_file.h"

namespace tahrir::ui {

namespace {

QByteArray Header(int rate, qint64 dataBytes) {
    // A wave file's sizes are 32-bit: a longer recording keeps its samples and its
    // header says as much as it can.
    const auto bytes = static_cast<std::uint32_t>(
        std::min<qint64>(dataBytes, std::numeric_limits<std::uint32_t>::max() - 36));
    return QByteArray::fromStdString(app::PcmWaveHeader(rate, 16, bytes));
}

} // namespace

bool WaveRecorder::start(const QString& file, int rate) {
    if (m_file.isOpen()) return false;
    m_file.setFileName(file);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    m_rate = rate;
    m_dataBytes = 0;
    m_half.clear();
    m_ok = m_file.write(Header(rate, 0)) == transcribe::WaveHeaderBytes;
    return true;
}

double WaveRecorder::append(QIODevice& input) { return append(input.readAll()); }

double WaveRecorder::append(const QByteArray& samples) {
    if (!m_file.isOpen() || samples.isEmpty()) return 0;
    m_ok = m_file.write(samples) == samples.size() && m_ok;
    m_dataBytes += samples.size();
    const QByteArray block = m_half + samples;
    int peak = 0;
    qsizetype i = 0;
    for (; i + 1 < block.size(); i += 2)
        peak = std::max(peak, std::abs(int(qFromLittleEndian<qint16>(block.constData() + i))));
    m_half = block.mid(i);
    return peak / 32768.0;
}

bool WaveRecorder::finish() {
    if (!m_file.isOpen()) return false;
    m_ok = m_file.seek(0) && m_file.write(Header(m_rate, m_dataBytes)) == transcribe::WaveHeaderBytes && m_ok;
    m_file.close();
    return m_ok;
}

} // namespace tahrir::ui
