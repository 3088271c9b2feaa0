#pragma once

#include "MenuExport.h"
#include "TestSupport.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// A project directory with a menu, a stylesheet and what the stylesheet made of it last, beside a directory that does
// not belong to the project.
class MenuTransformation : public testing::Test
{
protected:
    MenuTransformation()
    {
        QDir(m_directory.path()).mkpath(QStringLiteral("project/_menu"));
        QDir(m_directory.path()).mkpath(QStringLiteral("outside"));
        Write("project/_menu/menu.xml", "<menu><menuitem caption=\"Start\"/></menu>");
        Write("outside/secret.xml", "<secret>geheim</secret>");
        Write("project/_menu/menu.html", "before");
    }

    QString Path(const char* name) const { return m_directory.filePath(QString::fromUtf8(name)); }
    void Write(const char* name, const QByteArray& content) const { WriteAll(Path(name), content); }
    QByteArray Html() const { return ReadAll(Path("project/_menu/menu.html")); }

    // A stylesheet with these top-level elements.
    static QByteArray Stylesheet(const QByteArray& content)
    {
        return "<xsl:stylesheet version=\"1.0\" xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">" + content +
               "</xsl:stylesheet>";
    }
    // One whose only template puts this into an element "out".
    static QByteArray Template(const QByteArray& body)
    {
        return Stylesheet("<xsl:output method=\"xml\" omit-xml-declaration=\"yes\"/>"
                          "<xsl:template match=\"/\"><out>" +
                          body + "</out></xsl:template>");
    }

    TTransformationOutcome Run(const QByteArray& stylesheet) const
    {
        Write("project/_menu/menu.xsl", stylesheet);
        return Run();
    }
    TTransformationOutcome Run() const
    {
        return TransformMenu({.StylePath = Path("project/_menu/menu.xsl"),
                              .MenuPath = Path("project/_menu/menu.xml"),
                              .OutputPath = Path("project/_menu/menu.html"),
                              .ReadableRoots = {Path("project")}});
    }
    // The stylesheet gave up or was stopped: the failure is told and the former result stays.
    void ExpectFailure(const TTransformationOutcome& outcome) const
    {
        EXPECT_EQ(outcome.Saved, -1);
        EXPECT_EQ(Html(), "before");
    }

    QTemporaryDir m_directory;
};
