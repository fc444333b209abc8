#include "render/painter_backend.h"

#include <QFile>
#include <QFontDatabase>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QRawFont>
#include <QSvgGenerator>
#include <QTextOption>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <tuple>

#include "render/glyph_table.h"

namespace tahrir::render {

namespace {

constexpr double kMusicEm = 4; // staff units of the music font's em at size 1

QByteArray ReadFontFile(const std::filesystem::path& file) {
    QFile f(QString::fromStdString(file.string()));
    if (file.empty() || !f.open(QIODevice::ReadOnly)) return {};
    return f.readAll();
}

// A glyph drawn once into an image, for raster targets: the text engine draws glyphs of
// more than 64 pixels as outlines every time, which is slow on a whole page.
struct Sprite {
    QImage image;
    QPoint offset; // from the glyph origin to the image's top left
};

// Music font glyphs by pixel size; built once per size.
class MusicFont {
public:
    // One per font file, kept for the life of the process: font engines must not outlive
    // the GUI at exit. An unreadable file gives a font that draws nothing.
    static MusicFont& of(const std::filesystem::path& file) {
        static auto* fonts = new std::map<std::filesystem::path, std::unique_ptr<MusicFont>>;
        auto& font = (*fonts)[file];
        if (!font) font.reset(new MusicFont(file));
        return *font;
    }
    bool ok() const { return !m_data.isEmpty(); }
    const QRawFont& at(double pixelSize) {
        const int key = static_cast<int>(std::lround(pixelSize * 16));
        auto it = m_fonts.find(key);
        if (it == m_fonts.end())
            it = m_fonts.emplace(key, QRawFont(m_data, key / 16.0)).first;
        return it->second;
    }
    quint32 index(char32_t cp) {
        auto it = m_index.find(cp);
        if (it != m_index.end()) return it->second;
        const QList<quint32> ids = at(40).glyphIndexesForString(QString::fromUcs4(&cp, 1));
        const quint32 id = ids.isEmpty() ? 0 : ids.front();
        m_index.emplace(cp, id);
        return id;
    }

    const Sprite& sprite(quint32 id, double pixelSize, QRgb colour) {
        const auto key = std::make_tuple(id, static_cast<int>(std::lround(pixelSize * 16)), colour);
        auto it = m_sprites.find(key);
        if (it != m_sprites.end()) return it->second;
        const QPainterPath path = at(pixelSize).pathForGlyph(id);
        const QRect box = path.boundingRect().toAlignedRect().adjusted(-1, -1, 1, 1);
        Sprite s{QImage(std::max(1, box.width()), std::max(1, box.height()),
                        QImage::Format_ARGB32_Premultiplied),
                 box.topLeft()};
        s.image.fill(Qt::transparent);
        QPainter painter(&s.image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-box.topLeft());
        painter.fillPath(path, QColor::fromRgba(colour));
        painter.end();
        return m_sprites.emplace(key, std::move(s)).first->second;
    }

private:
    explicit MusicFont(const std::filesystem::path& file) : m_data(ReadFontFile(file)) {}
    QByteArray m_data;
    std::map<int, QRawFont> m_fonts;
    std::map<char32_t, quint32> m_index;
    std::map<std::tuple<quint32, int, QRgb>, Sprite> m_sprites;
};

QColor ToColor(std::uint32_t rgb) {
    return QColor((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF);
}

double WidthUnits(WidthClass w) {
    switch (w) {
    case WidthClass::Normal: return 0.11;
    case WidthClass::Stem: return 0.12;
    case WidthClass::Beam: return 0.42;
    }
    return 0.11;
}

struct Painter {
    QPainter& p;
    const PaintOptions& o;
    QString textFamily;
    std::map<int, QFont> fonts;

    QPointF at(double x, double y) const {
        return {o.originX + x * o.pixelsPerUnit, o.originY + y * o.pixelsPerUnit};
    }

    QColor colourOf(const DisplayItem& it) const {
        if (it.line > 0 && it.line == o.currentLine) return Qt::red;
        if (it.line > 0 && o.selStart > 0 && it.line >= o.selStart && it.line <= o.selEnd)
            return Qt::blue;
        return ToColor(it.colour);
    }

    QPen pen(const DisplayItem& it) const {
        const double w = o.preview ? 1.0 : WidthUnits(it.width) * o.pixelsPerUnit;
        QPen pen(colourOf(it), std::max(1.0, w));
        pen.setCapStyle(Qt::FlatCap);
        if (it.dashed) pen.setStyle(Qt::DashLine);
        return pen;
    }

    void glyph(const DisplayItem& it) {
        MusicFont& font = MusicFont::of(o.musicFontFile);
        if (!font.ok()) return;
        const double px = kMusicEm * it.size * o.pixelsPerUnit;
        const QRawFont& raw = font.at(px);
        const QColor colour = colourOf(it);
        LayOutCaption(it.text, it.x, it.y, it.size, it.stemDown, [&](const PlacedGlyph& g) {
            const quint32 id = font.index(g.codepoint);
            const QPointF origin = at(g.x, g.y);
            if (o.glyphsAsPaths) {
                QPainterPath path = raw.pathForGlyph(id);
                path.translate(origin);
                p.fillPath(path, colour);
            } else if (o.glyphSprites) {
                const Sprite& s = font.sprite(id, px, colour.rgba());
                p.drawImage(QPointF(std::round(origin.x()) + s.offset.x(),
                                    std::round(origin.y()) + s.offset.y()),
                            s.image);
            } else {
                QGlyphRun run;
                run.setRawFont(raw);
                run.setGlyphIndexes({id});
                run.setPositions({QPointF(0, 0)});
                p.setPen(colour);
                p.drawGlyphRun(origin, run);
            }
        });
    }

    void text(const DisplayItem& it, bool centred) {
        const int pixels =
            std::max(1, static_cast<int>(std::lround(kMusicEm * it.size * o.pixelsPerUnit)));
        auto cached = fonts.find(pixels);
        if (cached == fonts.end()) {
            QFont made(textFamily);
            made.setPixelSize(pixels);
            cached = fonts.emplace(pixels, made).first;
        }
        const QFont& f = cached->second;
        const QString s = QString::fromStdString(it.text);
        const QFontMetricsF fm(f, p.device());
        const double width = fm.horizontalAdvance(s);
        QPointF topLeft = at(it.x, it.y);
        if (centred) topLeft.rx() -= width / 2;
        const QRectF box(topLeft, QSizeF(width + fm.height(), fm.height() * 1.5));
        const QColor colour = colourOf(it);
        // Right-to-left text keeps its left edge where the layout put it.
        const Qt::LayoutDirection dir = s.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
        if (o.glyphsAsPaths) {
            QPainterPath path;
            path.addText(QPointF(0, 0), f, s);
            const QRectF b = path.boundingRect();
            path.translate(topLeft.x() - std::min(0.0, b.left()), topLeft.y() + fm.ascent());
            p.fillPath(path, colour);
            return;
        }
        QTextOption opt(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignTop);
        opt.setTextDirection(dir);
        opt.setWrapMode(QTextOption::NoWrap);
        p.setFont(f);
        p.setPen(colour);
        p.drawText(box, s, opt);
    }

    void item(const DisplayItem& it) {
        switch (it.kind) {
        case ItemKind::Glyph: glyph(it); break;
        case ItemKind::Stroke:
            p.setPen(pen(it));
            p.drawLine(at(it.x, it.y), at(it.x2, it.y2));
            break;
        case ItemKind::Arc: {
            p.setPen(pen(it));
            p.setBrush(Qt::NoBrush);
            const double r = it.x2;
            const QRectF box(at(it.x - r, it.y - r), at(it.x + r, it.y + r));
            constexpr double kSixteenths = 180 * 16 / M_PI;
            const int start = static_cast<int>(std::lround(it.a0 * kSixteenths));
            const int span = static_cast<int>(std::lround((it.a1 - it.a0) * kSixteenths));
            p.drawArc(box, start, span);
            break;
        }
        case ItemKind::Text: text(it, it.centred); break;
        case ItemKind::MeasureLabel:
            if (it.visible) text(it, true);
            break;
        }
    }
};

} // namespace

// Drops Qt's notice about a missing runtime folder, which says nothing to our users.
static void QuietMessages(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg && message.startsWith("QStandardPaths:")) return;
    qt_message_output(type, context, message);
}

void EnsureGuiApplication() {
    if (QGuiApplication::instance() != nullptr) return;
    qInstallMessageHandler(QuietMessages);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "tahrir";
    static char* argv[] = {name, nullptr};
    static auto* app = new QGuiApplication(argc, argv);
    (void)app;
}

std::string ResolveTextFont(const std::string& name) {
    const QStringList families = QFontDatabase::families();
    if (families.contains(QString::fromStdString(name), Qt::CaseInsensitive)) return name;
    for (const char* fallback : {"Nazli", "Homa", "DejaVu Sans"})
        if (families.contains(fallback, Qt::CaseInsensitive)) return fallback;
    return name;
}

void PaintDisplayList(QPainter& painter, const DisplayList& list, const PaintOptions& options) {
    const std::string family =
        ResolveTextFont(options.textFontName.empty() ? std::string(core::DefaultTextFontName)
                                                     : options.textFontName);
    Painter p{painter, options, QString::fromStdString(family), {}};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    const std::uint8_t want = options.printTarget ? OnPrint : OnScreen;
    for (const DisplayItem& it : list.items)
        if ((it.target & want) != 0) p.item(it);
    painter.restore();
}

} // namespace tahrir::render
