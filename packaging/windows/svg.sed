# Makes the SVG module of Qt 5 compile with Qt 6: strings by views, and what else has another name.
s/QStringRef\((\w+(\.\w+)?)\.string\(\), \1\.position\(\) \+ (\w+), (\w+)\)/\1.mid(\3, \4)/g
s/QStringRef\((\w+(\.\w+)?)\.string\(\), \1\.position\(\), (\w+)\)/\1.mid(0, \3)/g
s/QStringRef (\w+)\((\w+(\.\w+)?)\.string\(\), \2\.position\(\) \+ (\w+), \2\.length\(\) - \4\)/QStringView \1 = \2.mid(\4)/
s/QXmlStreamStringRef (name|value);/QString \1;/
s/QXmlStreamStringRef\(name\)/name.toString()/
s/QXmlStreamStringRef\(QStringRef\(&sym\.text, sym\.start, len\)\)/sym.text.mid(sym.start, len)/
s/QXmlStreamStringRef\(QStringRef\(&value, 0, value\.length\(\)\)\)/value/
s/QStringRef\(&(\w+), 0, \1\.length\(\)\)/QStringView(\1)/
s/QStringRef\(&sym\.text, sym\.start, sym\.len\)/QStringView(sym.text).mid(sym.start, sym.len)/
s/QStringRef\(&/QStringView(/g
s/QStringRef str\(&instr\)/QStringView str(instr)/
s/\bQStringRef\b/QStringView/g
/qmatrix\.h|qtextcodec\.h|QTextCodec/d
s/QMatrix (QSvgRenderer::)?matrixForElement/QTransform \1matrixForElement/
s/\.toAffine\(\)//
s/unicode = 0;/unicode = QChar();/
s/str\.string\(\)->constData\(\) \+ str\.position\(\)/str.data()/
s/colorStrTr\.unicode\(\)/colorStrTr.data()/
s/\? 0 : uncStr/? QChar() : uncStr/
s/(\*const_cast<QChar \*>\(end\)) = 0;/\1 = QChar();/
s/QStringView ref\((&|)name, 1, name\.length\(\) - 1\)/QStringView ref = QStringView(name).mid(1)/
s/midRef/mid/
s/setWeight\((SVGToQtWeight\(.*\))\);/setWeight(QFont::Weight(\1));/
s/QString attribute\(NodePtr node, const QString &name\)/QString attributeValue(NodePtr node, const QCss::AttributeSelector \&selector)/
/attributeValue\(NodePtr node, const QCss/{
n
s/\{/{ const QString \&name = selector.name;/
}
# A missing attribute is the empty text.
/^static qreal toDouble\(const QStringView/{
n
s/\{/{ if (str.isNull()) return toDouble(QString(), ok);/
}
