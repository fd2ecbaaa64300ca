#include "contents/ContentsWords.h"

#include <QRegularExpression>

namespace leafwright {

namespace {

constexpr auto uncased =
    QRegularExpression::UseUnicodePropertiesOption | QRegularExpression::CaseInsensitiveOption;

}  // namespace

bool isContentsTitle(const QString &text) {
    constexpr int longest = 45;
    static const QRegularExpression title(
        QStringLiteral(
            "^(?:\\d+\\s+)?(?:(?:table\\s+of\\s+|brief\\s+|short\\s+|detailed\\s+|full\\s+)?contents?|"
            "summary of contents|inhalt|inhaltsverzeichnis|inhaltsübersicht|inhoud|inhoudsopgave|"
            "table\\s+des\\s+mati[eè]res|sommaire|"
            "[ií]ndice(?:\\s+general|\\s+generale|\\s+geral|\\s+de\\s+(?:contenidos?|conteúdo|materias))?|"
            "tabla\\s+de\\s+contenidos?|contenidos?|sumário|sommario|conteúdo|indice\\s+analitico|"
            "содержание|оглавление|зміст|spis\\s+treści|obsah|tartalomjegyzék|innehåll|innehållsförteckning|"
            "indhold|innhold|sisällys(?:luettelo)?|içindekiler|cuprins|فهرست(?:\\s+مطالب)?|المحتويات|"
            "目\\s*次|目\\s*录|目\\s*錄|차\\s*례|목\\s*차|agenda|outline|overview)\\s*[:.]?$"),
        uncased);
    return text.size() < longest && title.match(text).hasMatch();
}

bool isListTitle(const QString &text) {
    constexpr int longest = 60;
    static const QRegularExpression title(
        QStringLiteral(
            "^(?:list\\s+of\\s+\\w+|list\\s+of\\s+\\w+\\s+\\w+|abbildungsverzeichnis|tabellenverzeichnis|"
            "verzeichnis der .*|(?:liste|table)\\s+des\\s+(?:figures|tableaux|illustrations|exemples|codes)|"
            "[ií]ndice\\s+de\\s+(?:figuras|tablas|cuadros|tabelas|quadros)|lista\\s+de\\s+\\w+|elenco\\s+"
            "delle\\s+\\w+|"
            "figures|tables|list of examples|spis\\s+(?:rysunków|tabel)|seznam\\s+(?:obrázků|tabulek)|"
            "список\\s+\\w+|图目录|表目录|插图|图\\s*目\\s*录|図\\s*目\\s*次|表\\s*目\\s*次|図一覧|表一覧|"
            "表の一覧|図の一覧|"
            "例の一覧|表清单|例清单)\\s*$"),
        uncased);
    return text.size() < longest && title.match(text).hasMatch();
}

bool startsAsCaption(const QString &text) {
    static const QRegularExpression caption(
        QStringLiteral(
            "^(?:fig(?:ure|\\.|ura)?|tab(?:le|elle|la|leau|\\.)|abb(?:ildung|\\.)|listing|algorithm|example|"
            "beispiel|"
            "exemple|ejemplo|esempio|quadro|cuadro|equation|theorem|lemma|proof|definition|corollary|remark|"
            "proposition|exercise|problem|note|warning|caution|tip|rys\\.|obr\\.|рис\\.|таблица|рисунок|图|"
            "表|図|例)"
            "\\s*\\.?\\s*[\\(\\[]?\\d"),
        uncased);
    return caption.match(text).hasMatch();
}

bool isBackMatter(const QString &title) {
    static const QRegularExpression back(
        QStringLiteral(
            "^(?:references|bibliography|index|.*\\bindex|glossary|literatur\\w*|bibliographie|"
            "literaturverzeichnis|stichwortverzeichnis|bibliografía|índice.*|indice.*|参考文献|索引)$"),
        uncased);
    return back.match(title).hasMatch();
}

FontLook lookOfFontName(const QString &fontName) {
    static const QRegularExpression bold(
        QStringLiteral(
            "bold|black|heavy|semib|demi|cmbx|cmssbx|sfbx|sfsx|ecbx|cmb10|-medi\\b|-b$|-bd|\\bbd\\b|"
            "medium.?cond"),
        uncased);
    static const QRegularExpression mono(
        QStringLiteral(
            "mono|courier|cmtt|cmsltt|ectt|sftt|typewriter|consol|nimbusmon|inconsol|code|lmtt|txtt|tt\\d"),
        uncased);
    static const QRegularExpression italic(QStringLiteral("ital|obl|cmti|cmsl|slant|-it\\b"), uncased);
    static const QRegularExpression subset(QStringLiteral("^[A-Z]{6}\\+"));
    static const QRegularExpression style(
        QStringLiteral(
            "[-,]?(?:bold|ital(?:ic)?|oblique|roman|regular|medium|medi|regu|slant(?:ed)?|book|light|mt|ps|"
            "reg|semibold|demi|it|bd)\\b"),
        uncased);
    static const QRegularExpression noLetters(QStringLiteral("[\\d\\W_]+"), uncased);
    FontLook look;
    look.bold = bold.match(fontName).hasMatch();
    look.mono = mono.match(fontName).hasMatch();
    look.italic = italic.match(fontName).hasMatch();
    look.family = QString(fontName).remove(subset).remove(style).remove(noLetters).toLower();
    return look;
}

}  // namespace leafwright
