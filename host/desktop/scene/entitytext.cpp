// Text entities: TEXT, ATTRIB and ATTDEF as one-line runs placed by their alignment, MTEXT as a
// paragraph block placed by its attachment point. Their characters are read when drawn.
#include <numbers>

#include "host/desktop/scene/entityreader.h"
#include "host/dxf/dxfdocument.h"

namespace {

constexpr double kDegree = std::numbers::pi / 180.0;
constexpr std::int64_t kBackward = 2;
constexpr std::int64_t kUpsideDown = 4;

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Characters shown by a TEXT value, near enough for its box: %% codes count as one.
std::uint32_t textLength(std::string_view bytes) {
    std::uint32_t count = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '%' && i + 2 < bytes.size() && bytes[i + 1] == '%') i += 2;
        if (!isContinuationByte(bytes[i])) ++count;
    }
    return count;
}

// Lines and the longest line of an MTEXT value, its formatting skipped, near enough for its box.
struct Paragraphs {
    std::uint32_t lines = 1;
    std::uint32_t longest = 0;
    std::uint32_t current = 0;

    void add(std::string_view bytes) {
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const char c = bytes[i];
            if (c == '{' || c == '}' || isContinuationByte(c)) continue;
            if (c != '\\' || i + 1 >= bytes.size()) {
                ++current;
                continue;
            }
            const char code = bytes[++i];
            if (code == 'P' || code == 'X' || code == 'N') {
                breakLine();
            } else if (std::string_view("ACcFfHhQqTtWwpS").find(code) != std::string_view::npos) {
                const std::size_t end = bytes.find(';', i);
                if (code == 'S') current += 3;
                i = end == std::string_view::npos ? bytes.size() : end;
            } else if (std::string_view("LlOoKk").find(code) == std::string_view::npos) {
                ++current;
                if (code == 'U' && i + 5 < bytes.size() && bytes[i + 1] == '+') i += 5;
            }
        }
        longest = std::max(longest, current);
    }
    void breakLine() {
        longest = std::max(longest, current);
        current = 0;
        ++lines;
    }
};

SceneHorizontal horizontalOf(std::int64_t code) {
    switch (code) {
        case 1:
        case 4:
            return SceneHorizontal::Center;
        case 2:
            return SceneHorizontal::Right;
        case 3:
            return SceneHorizontal::Aligned;
        case 5:
            return SceneHorizontal::Fit;
        default:
            return SceneHorizontal::Left;
    }
}

SceneVertical verticalOf(std::int64_t code) {
    switch (code) {
        case 1:
            return SceneVertical::Bottom;
        case 2:
            return SceneVertical::Middle;
        case 3:
            return SceneVertical::Top;
        default:
            return SceneVertical::Baseline;
    }
}

}  // namespace

void SceneEntityReader::readText(Entity& entity) {
    addTextRun(entity, entity.ids[entity.at], entity.style, 73, SceneTextContent::Value);
}

void SceneEntityReader::readAttributeDefinition(Entity& entity) {
    // Inside a block a definition only shapes the references' attributes; outside one it shows
    // its tag.
    if (entity.inBlock) return;
    addTextRun(entity, entity.ids[entity.at], entity.style, 74, SceneTextContent::Tag);
}

void SceneEntityReader::addTextRun(Entity& entity, AcDbObjectId source, const Style& style,
                                   int verticalCode, SceneTextContent content) {
    double height = m_fields.real(40, 1);
    if (!(height > 0)) height = 1;
    double widthFactor = m_fields.real(41, 1);
    if (!(widthFactor > 0)) widthFactor = 1;
    double rotation = m_fields.real(50, 0) * kDegree;
    const double oblique = m_fields.real(51, 0) * kDegree;
    const std::int64_t generation = m_fields.integer(71, 0);
    SceneText text;
    text.source = source;
    text.content = content;
    const std::int64_t horizontal = m_fields.integer(72, 0);
    text.horizontal = horizontalOf(horizontal);
    text.vertical =
        horizontal == 4 ? SceneVertical::Middle : verticalOf(m_fields.integer(verticalCode, 0));
    const ScenePoint first{m_fields.real(10, 0), m_fields.real(20, 0)};
    const ScenePoint second{m_fields.real(11, first.x), m_fields.real(21, first.y)};
    ScenePoint anchor = first;
    if (text.horizontal == SceneHorizontal::Aligned || text.horizontal == SceneHorizontal::Fit) {
        const double length = sceneDistance(first, second);
        if (length > 0) {
            rotation = std::atan2(second.y - first.y, second.x - first.x);
            text.fitWidth = length / height;
        } else {
            text.horizontal = SceneHorizontal::Left;
        }
        text.vertical = SceneVertical::Baseline;
    } else if ((text.horizontal != SceneHorizontal::Left ||
                text.vertical != SceneVertical::Baseline) &&
               m_fields.has(11)) {
        anchor = second;
    }
    text.longestLine = textLength(m_fields.text(content == SceneTextContent::Tag ? 2 : 1));
    const SceneTransform mirror = SceneTransform::scaling((generation & kBackward) != 0 ? -1 : 1,
                                                          (generation & kUpsideDown) != 0 ? -1 : 1);
    text.frame = SceneTransform{1, 0, std::tan(oblique), 1, 0, 0}
                     .then(SceneTransform::scaling(height * widthFactor, height))
                     .then(mirror)
                     .then(SceneTransform::rotation(rotation))
                     .then(SceneTransform::translation(anchor.x, anchor.y))
                     .then(ocsTransform(entity, 30));
    entity.shape->addText(text, style.color, style.inherits);
}

void SceneEntityReader::readMText(Entity& entity) {
    double height = m_fields.real(40, 1);
    if (!(height > 0)) height = 1;
    // The insertion point and the direction are in world coordinates; without a direction the
    // rotation turns the text in its OCS.
    const double nx = m_fields.real(210, 0);
    const double ny = m_fields.real(220, 0);
    const double nz = m_fields.real(230, 1);
    double dx = 0, dy = 0, dz = 0;
    if (m_fields.has(11)) {
        dx = m_fields.real(11, 1);
        dy = m_fields.real(21, 0);
        dz = m_fields.real(31, 0);
    } else {
        const double rotation = m_fields.real(50, 0) * kDegree;
        const ScenePoint d =
            entity.ocs.transform().mapVector({std::cos(rotation), std::sin(rotation)});
        dx = d.x;
        dy = d.y;
    }
    const double length = std::sqrt(dx * dx + dy * dy + dz * dz);
    if (length == 0) {
        dx = 1;
    } else {
        dx /= length, dy /= length, dz /= length;
    }
    const double normal = std::sqrt(nx * nx + ny * ny + nz * nz);
    const double k = normal > 0 ? 1 / normal : 1;
    const ScenePoint up{(ny * dz - nz * dy) * k, (nz * dx - nx * dz) * k};

    SceneText text;
    text.source = entity.ids[entity.at];
    text.content = SceneTextContent::MText;
    const std::int64_t attachment = std::clamp<std::int64_t>(m_fields.integer(71, 1), 1, 9) - 1;
    text.horizontal = attachment % 3 == 0   ? SceneHorizontal::Left
                      : attachment % 3 == 1 ? SceneHorizontal::Center
                                            : SceneHorizontal::Right;
    text.vertical = attachment / 3 == 0   ? SceneVertical::Top
                    : attachment / 3 == 1 ? SceneVertical::Middle
                                          : SceneVertical::Bottom;
    const double width = m_fields.real(41, 0);
    text.wrapWidth = width > 0 ? width / height : 0.0;
    text.lineSpacing = 5.0 / 3.0 * std::max(0.25, m_fields.real(44, 1));
    Paragraphs paragraphs;
    const DxfTagRange tags = tagsAt(entity, 0);
    for (std::uint32_t i = 1; i < tags.size(); ++i) {
        const int code = m_file.code(tags[i]);
        if (code >= 1000) break;
        if (code == 1 || code == 3) paragraphs.add(m_file.value(tags[i]));
    }
    text.lineCount = paragraphs.lines;
    text.longestLine = paragraphs.longest;
    text.frame = SceneTransform::scaling(height, height)
                     .then({dx, dy, up.x, up.y, m_fields.real(10, 0), m_fields.real(20, 0)});
    entity.shape->addText(text, entity.style.color, entity.style.inherits);
}
