#include "pdf/FontName.h"

#include <QStringList>

namespace leafwright {

namespace {

QString withoutSubsetTag(const QString &name) {
    constexpr int tagLength = 6;
    if (name.size() <= tagLength + 1 || name[tagLength] != u'+') return name;
    const bool tagged =
        std::all_of(name.begin(), name.begin() + tagLength, [](QChar c) { return c >= u'A' && c <= u'Z'; });
    return tagged ? name.mid(tagLength + 1) : name;
}

/// A mark stands behind a lower-case letter, so that names like "GPS" or "MTMI" stay whole.
QString withoutVendorMark(const QString &name) {
    for (const QLatin1String mark : {QLatin1String("PSMT"), QLatin1String("MT"), QLatin1String("PS")}) {
        if (name.size() > mark.size() && name.endsWith(mark) &&
            name[name.size() - mark.size() - 1].isLower()) {
            return name.chopped(mark.size());
        }
    }
    return name;
}

FontTraits traitsNamedIn(const QString &text) {
    const auto mentions = [&text](std::initializer_list<QLatin1String> words) {
        return std::any_of(words.begin(), words.end(),
                           [&text](QLatin1String word) { return text.contains(word, Qt::CaseInsensitive); });
    };
    FontTraits traits = 0;
    if (mentions({QLatin1String("bold"), QLatin1String("black"), QLatin1String("heavy")}))
        traits |= BoldTrait;
    if (mentions({QLatin1String("italic"), QLatin1String("oblique")})) traits |= ItalicTrait;
    return traits;
}

}  // namespace

FontFace fontFaceFromBaseFont(const QByteArray &baseFont, FontTraits traits) {
    const QString name = withoutSubsetTag(QString::fromUtf8(baseFont)).trimmed();
    const auto isSeparator = [](QChar c) { return c == u',' || c == u'-'; };
    const qsizetype cut = std::find_if(name.begin(), name.end(), isSeparator) - name.begin();

    QString family = withoutVendorMark(name.left(cut).trimmed());
    QString style = name.mid(cut + 1);
    std::replace_if(style.begin(), style.end(), isSeparator, u' ');
    style = style.simplified();
    style =
        style == QLatin1String("MT") || style == QLatin1String("PS") ? QString() : withoutVendorMark(style);
    if (family.isEmpty()) std::swap(family, style);

    FontFace face;
    face.displayName = style.isEmpty() ? family : family + u' ' + style;
    // Only the style part may speak of weight when there is one: "BlackAdder-Regular" is not black.
    face.traits = traits | traitsNamedIn(style.isEmpty() ? family : style);
    face.familyName = std::move(family);
    return face;
}

}  // namespace leafwright
