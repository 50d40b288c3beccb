#include "archive/frmPlotVector.h"

#include <QBuffer>
#include <QFontInfo>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QTextItem>
#include <QXmlStreamWriter>
#include <limits>

namespace {

constexpr int DotsPerInch = 96;
constexpr double MillimetresPerInch = 25.4;

QString Number(double value) {
    return QString::number(value, 'g', 7);
}

QString PairOf(QPointF point) {
    return Number(point.x()) + QLatin1Char(',') + Number(point.y());
}

QString MatrixOf(const QTransform& place) {
    QStringList numbers;
    for (const double value :
         {place.m11(), place.m12(), place.m21(), place.m22(), place.dx(), place.dy()}) {
        numbers << Number(value);
    }
    return QStringLiteral("matrix(%1)").arg(numbers.join(QLatin1Char(',')));
}

QString PathText(const QPainterPath& path) {
    QString text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        switch (element.type) {
            case QPainterPath::MoveToElement:
                text += QLatin1Char('M');
                break;
            case QPainterPath::LineToElement:
                text += QLatin1Char('L');
                break;
            case QPainterPath::CurveToElement:
                text += QLatin1Char('C');
                break;
            default:  // the other points of a curve
                text += QLatin1Char(' ');
                break;
        }
        text += PairOf(element);
    }
    return text;
}

QString CapOf(Qt::PenCapStyle style) {
    return style == Qt::FlatCap    ? QStringLiteral("butt")
           : style == Qt::RoundCap ? QStringLiteral("round")
                                   : QStringLiteral("square");
}

QString JoinOf(Qt::PenJoinStyle style) {
    return style == Qt::BevelJoin   ? QStringLiteral("bevel")
           : style == Qt::RoundJoin ? QStringLiteral("round")
                                    : QStringLiteral("miter");
}

/// Writes each thing painted as an element that says all there is to say of it.
class VectorEngine final : public QPaintEngine {
 public:
    VectorEngine(QIODevice& file, QSize size)
        : QPaintEngine(PaintEngineFeatures(AllFeatures) & ~PatternBrush & ~PerspectiveTransform &
                       ~ConicalGradientFill & ~PorterDuff),
          size_(size),
          xml_(&file) {}

    [[nodiscard]] Type type() const override { return User; }
    bool begin(QPaintDevice* /*sheet*/) override;
    bool end() override;
    void updateState(const QPaintEngineState& state) override;
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawTextItem(const QPointF& place, const QTextItem& item) override;
    void drawPixmap(const QRectF& where, const QPixmap& pixels, const QRectF& part) override;

 private:
    void Write(const QString& name, const QString& value) { xml_.writeAttribute(name, value); }
    void Start(const QString& element);
    void WritePen();
    void WriteBrush();
    void WriteColor(const QString& what, const QColor& color);
    void MakeClip(const QPainterPath& path);

    QSize size_;
    QXmlStreamWriter xml_;
    QPen pen_;
    QBrush brush_;
    QTransform place_;
    QPainterPath clip_;
    QString clipName_;  // empty while nothing is clipped
    int clips_ = 0;
};

bool VectorEngine::begin(QPaintDevice* /*sheet*/) {
    xml_.setAutoFormatting(true);
    xml_.writeStartDocument();
    xml_.writeStartElement(QStringLiteral("svg"));
    xml_.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    Write(QStringLiteral("width"), QString::number(size_.width()));
    Write(QStringLiteral("height"), QString::number(size_.height()));
    Write(QStringLiteral("viewBox"),
          QStringLiteral("0 0 %1 %2").arg(size_.width()).arg(size_.height()));
    return true;
}

bool VectorEngine::end() {
    xml_.writeEndDocument();
    return !xml_.hasError();
}

void VectorEngine::updateState(const QPaintEngineState& now) {
    pen_ = now.pen();
    brush_ = now.brush();
    place_ = now.transform();
    constexpr DirtyFlags Clip = DirtyClipPath | DirtyClipRegion | DirtyClipEnabled;
    if ((now.state() & Clip) == 0) {
        return;
    }
    if (painter()->hasClipping()) {
        MakeClip(place_.map(painter()->clipPath()));
    } else {
        clipName_.clear();
    }
}

void VectorEngine::MakeClip(const QPainterPath& path) {
    if (clips_ == 0 || path != clip_) {
        clip_ = path;
        ++clips_;
        xml_.writeStartElement(QStringLiteral("clipPath"));
        Write(QStringLiteral("id"), QStringLiteral("clip%1").arg(clips_));
        xml_.writeEmptyElement(QStringLiteral("path"));
        Write(QStringLiteral("d"), PathText(path));
        xml_.writeEndElement();
    }
    clipName_ = QStringLiteral("url(#clip%1)").arg(clips_);
}

// A clip stands in the sheet's own coordinates, so it lies around what is moved.
void VectorEngine::Start(const QString& element) {
    xml_.writeStartElement(QStringLiteral("g"));
    if (!clipName_.isEmpty()) {
        Write(QStringLiteral("clip-path"), clipName_);
    }
    xml_.writeStartElement(element);
    Write(QStringLiteral("transform"), MatrixOf(place_));
}

void VectorEngine::WriteColor(const QString& what, const QColor& color) {
    Write(what, color.name());
    if (color.alpha() < 255) {
        Write(what + QStringLiteral("-opacity"), Number(color.alphaF()));
    }
}

void VectorEngine::WritePen() {
    if (pen_.style() == Qt::NoPen) {
        return;
    }
    const double width = pen_.widthF() > 0 ? pen_.widthF() : 1;
    WriteColor(QStringLiteral("stroke"), pen_.color());
    Write(QStringLiteral("stroke-width"), Number(width));
    Write(QStringLiteral("stroke-linecap"), CapOf(pen_.capStyle()));
    Write(QStringLiteral("stroke-linejoin"), JoinOf(pen_.joinStyle()));
    if (pen_.isCosmetic()) {
        Write(QStringLiteral("vector-effect"), QStringLiteral("non-scaling-stroke"));
    }
    QStringList dashes;
    for (const double dash : pen_.dashPattern()) {
        dashes << Number(dash * width);
    }
    if (!dashes.isEmpty()) {
        Write(QStringLiteral("stroke-dasharray"), dashes.join(QLatin1Char(',')));
    }
}

void VectorEngine::WriteBrush() {
    if (brush_.style() == Qt::NoBrush) {
        Write(QStringLiteral("fill"), QStringLiteral("none"));
    } else {
        WriteColor(QStringLiteral("fill"), brush_.color());
    }
}

void VectorEngine::drawPath(const QPainterPath& path) {
    Start(QStringLiteral("path"));
    WritePen();
    WriteBrush();
    if (path.fillRule() == Qt::OddEvenFill) {
        Write(QStringLiteral("fill-rule"), QStringLiteral("evenodd"));
    }
    Write(QStringLiteral("d"), PathText(path));
    xml_.writeEndElement();
    xml_.writeEndElement();
}

void VectorEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    const bool open = mode == PolylineMode;
    QStringList places;
    for (int i = 0; i < count; ++i) {
        places << PairOf(points[i]);
    }
    Start(open ? QStringLiteral("polyline") : QStringLiteral("polygon"));
    WritePen();
    if (open) {
        Write(QStringLiteral("fill"), QStringLiteral("none"));
    } else {
        WriteBrush();
        if (mode == OddEvenMode) {
            Write(QStringLiteral("fill-rule"), QStringLiteral("evenodd"));
        }
    }
    Write(QStringLiteral("points"), places.join(QLatin1Char(' ')));
    xml_.writeEndElement();
    xml_.writeEndElement();
}

void VectorEngine::drawTextItem(const QPointF& place, const QTextItem& item) {
    const QFont font = item.font();
    Start(QStringLiteral("text"));
    WriteColor(QStringLiteral("fill"), pen_.color());
    Write(QStringLiteral("x"), Number(place.x()));
    Write(QStringLiteral("y"), Number(place.y()));
    Write(QStringLiteral("font-family"), font.family());
    Write(QStringLiteral("font-size"), QString::number(QFontInfo(font).pixelSize()));
    Write(QStringLiteral("font-weight"), QString::number(font.weight()));
    if (font.italic()) {
        Write(QStringLiteral("font-style"), QStringLiteral("italic"));
    }
    Write(QStringLiteral("xml:space"), QStringLiteral("preserve"));
    xml_.writeCharacters(item.text());
    xml_.writeEndElement();
    xml_.writeEndElement();
}

void VectorEngine::drawPixmap(const QRectF& where, const QPixmap& pixels, const QRectF& part) {
    QByteArray bytes;
    QBuffer file(&bytes);
    file.open(QIODevice::WriteOnly);
    pixels.copy(part.toAlignedRect()).save(&file, "PNG");
    Start(QStringLiteral("image"));
    Write(QStringLiteral("x"), Number(where.x()));
    Write(QStringLiteral("y"), Number(where.y()));
    Write(QStringLiteral("width"), Number(where.width()));
    Write(QStringLiteral("height"), Number(where.height()));
    Write(QStringLiteral("href"),
          QStringLiteral("data:image/png;base64,") + QString::fromLatin1(bytes.toBase64()));
    xml_.writeEndElement();
    xml_.writeEndElement();
}

}  // namespace

VectorSheet::VectorSheet(QIODevice& file, QSize size)
    : size_(size), engine_(std::make_unique<VectorEngine>(file, size)) {}

VectorSheet::~VectorSheet() = default;

QPaintEngine* VectorSheet::paintEngine() const {
    return engine_.get();
}

int VectorSheet::metric(PaintDeviceMetric metric) const {
    const auto millimetres = [](int pixels) {
        return qRound(pixels * MillimetresPerInch / DotsPerInch);
    };
    switch (metric) {
        case PdmWidth:
            return size_.width();
        case PdmHeight:
            return size_.height();
        case PdmWidthMM:
            return millimetres(size_.width());
        case PdmHeightMM:
            return millimetres(size_.height());
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return DotsPerInch;
        case PdmDepth:
            return 32;
        case PdmNumColors:
            return std::numeric_limits<int>::max();
        case PdmDevicePixelRatio:
            return 1;
        default:
            return QPaintDevice::metric(metric);
    }
}
