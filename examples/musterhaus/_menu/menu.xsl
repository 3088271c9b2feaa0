<?xml version="1.0" encoding="UTF-8"?>
<!--
  Turns the exported menu into an HTML page that needs nothing but menu.js and menu.css beside it.

  The page works without its script: all sub menus are open then. Every address is checked before it becomes a link.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="no" doctype-system="about:legacy-compat"/>

  <!-- How to get from the page to the root of the project: addresses that begin with a slash are counted from there,
       so that they hold on a server and on a disk alike. -->
  <xsl:param name="root" select="'..'"/>

  <!-- The document declares ISO-8859-1 and carries Windows-1252. The last five codes mean nothing and are dropped. -->
  <xsl:variable name="control-codes" select="concat(
    '&#x80;&#x82;&#x83;&#x84;&#x85;&#x86;&#x87;&#x88;&#x89;&#x8A;&#x8B;&#x8C;&#x8E;&#x91;&#x92;&#x93;&#x94;',
    '&#x95;&#x96;&#x97;&#x98;&#x99;&#x9A;&#x9B;&#x9C;&#x9E;&#x9F;&#x81;&#x8D;&#x8F;&#x90;&#x9D;')"/>
  <xsl:variable name="link-control-codes" select="concat($control-codes, '&#9;&#10;&#13;')"/>
  <xsl:variable name="characters" select="'€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ'"/>

  <xsl:variable name="capitals" select="'ABCDEFGHIJKLMNOPQRSTUVWXYZ'"/>
  <xsl:variable name="small-letters" select="'abcdefghijklmnopqrstuvwxyz'"/>
  <xsl:variable name="scheme-characters" select="concat($small-letters, '0123456789+-.')"/>
  <xsl:variable name="unsafe-schemes" select="'|javascript|data|vbscript|'"/>

  <xsl:variable name="with-sub-items" select="not(/menu/@levels &lt; 2)"/>

  <xsl:template match="/">
    <html lang="de">
      <head>
        <title>Menü</title>
        <xsl:text>&#10;</xsl:text>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <meta name="color-scheme" content="light dark"/>
        <xsl:text>&#10;</xsl:text>
        <link rel="stylesheet" href="menu.css"/>
        <script src="menu.js"/>
      </head>
      <xsl:text>&#10;</xsl:text>
      <body>
        <xsl:text>&#10;</xsl:text>
        <a class="skip" href="#menue">Zum Menü springen</a>
        <xsl:text>&#10;</xsl:text>
        <header>
          <xsl:apply-templates select="menu/@logo"/>
          <h1 id="titel">Menü</h1>
        </header>
        <xsl:text>&#10;</xsl:text>
        <nav id="menue" aria-labelledby="titel" tabindex="-1">
          <xsl:apply-templates select="menu"/>
        </nav>
        <xsl:text>&#10;</xsl:text>
        <xsl:call-template name="hints"/>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="@logo">
    <xsl:variable name="address">
      <xsl:apply-templates select="." mode="address"/>
    </xsl:variable>
    <xsl:if test="$address != ''">
      <img class="logo" src="{$address}" alt="Logo"/>
    </xsl:if>
  </xsl:template>

  <xsl:template match="menu">
    <p class="empty">Das Menü ist leer.</p>
  </xsl:template>

  <xsl:template match="menu[menuitem]">
    <xsl:text>&#10;</xsl:text>
    <ul class="mains">
      <xsl:text>&#10;</xsl:text>
      <xsl:for-each select="menuitem">
        <xsl:variable name="has-sub-items" select="$with-sub-items and menuitem"/>
        <xsl:variable name="caption">
          <xsl:apply-templates select="." mode="caption"/>
        </xsl:variable>
        <li class="main">
          <xsl:call-template name="access"/>
          <xsl:call-template name="entry">
            <xsl:with-param name="caption" select="string($caption)"/>
            <xsl:with-param name="mark" select="substring(normalize-space($caption), 1, 1)"/>
            <xsl:with-param name="opens" select="$has-sub-items"/>
          </xsl:call-template>
          <xsl:if test="$has-sub-items">
            <button class="toggle" type="button" aria-expanded="false" aria-controls="sub{position()}"
                    aria-label="Untermenü {$caption}"/>
            <xsl:text>&#10;</xsl:text>
            <ul class="subs" id="sub{position()}">
              <xsl:text>&#10;</xsl:text>
              <xsl:apply-templates select="menuitem" mode="sub"/>
            </ul>
          </xsl:if>
        </li>
        <xsl:text>&#10;</xsl:text>
      </xsl:for-each>
    </ul>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>

  <xsl:template match="menuitem" mode="sub">
    <xsl:variable name="caption">
      <xsl:apply-templates select="." mode="caption"/>
    </xsl:variable>
    <li class="sub">
      <xsl:call-template name="access"/>
      <xsl:call-template name="entry">
        <xsl:with-param name="caption" select="string($caption)"/>
      </xsl:call-template>
    </li>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>

  <!-- What leads to the page of an item, and to its help. An item without a usable link is text,
       and opens its sub menu when it has one. -->
  <xsl:template name="entry">
    <xsl:param name="caption"/>
    <xsl:param name="mark"/>
    <xsl:param name="opens" select="false()"/>
    <xsl:variable name="address">
      <xsl:apply-templates select="@link" mode="address"/>
    </xsl:variable>
    <xsl:variable name="help">
      <xsl:apply-templates select="@help" mode="address"/>
    </xsl:variable>
    <xsl:choose>
      <xsl:when test="$address != ''">
        <a class="entry" href="{$address}">
          <xsl:call-template name="name">
            <xsl:with-param name="caption" select="$caption"/>
            <xsl:with-param name="mark" select="$mark"/>
          </xsl:call-template>
        </a>
      </xsl:when>
      <xsl:otherwise>
        <span class="entry">
          <xsl:if test="$opens">
            <xsl:attribute name="class">entry opener</xsl:attribute>
          </xsl:if>
          <xsl:call-template name="name">
            <xsl:with-param name="caption" select="$caption"/>
            <xsl:with-param name="mark" select="$mark"/>
          </xsl:call-template>
        </span>
      </xsl:otherwise>
    </xsl:choose>
    <xsl:if test="$help != ''">
      <a class="help" href="{$help}" title="Hilfe zu {$caption}" aria-label="Hilfe zu {$caption}">?</a>
    </xsl:if>
  </xsl:template>

  <xsl:template name="name">
    <xsl:param name="caption"/>
    <xsl:param name="mark"/>
    <xsl:if test="normalize-space(@title) != ''">
      <xsl:variable name="title" select="translate(@title, $control-codes, $characters)"/>
      <xsl:if test="$title != $caption">
        <xsl:attribute name="title">
          <xsl:value-of select="$title"/>
        </xsl:attribute>
      </xsl:if>
    </xsl:if>
    <xsl:if test="$mark != ''">
      <span class="mark" aria-hidden="true">
        <xsl:value-of select="$mark"/>
      </span>
    </xsl:if>
    <span class="name">
      <xsl:value-of select="$caption"/>
    </span>
  </xsl:template>

  <xsl:template name="access">
    <xsl:if test="@access">
      <xsl:attribute name="data-access">
        <xsl:value-of select="@access"/>
      </xsl:attribute>
    </xsl:if>
  </xsl:template>

  <xsl:template match="menuitem" mode="caption">
    <xsl:choose>
      <xsl:when test="normalize-space(@caption) != ''">
        <xsl:value-of select="translate(@caption, $control-codes, $characters)"/>
      </xsl:when>
      <xsl:when test="normalize-space(@title) != ''">
        <xsl:value-of select="translate(@title, $control-codes, $characters)"/>
      </xsl:when>
      <xsl:otherwise>Ohne Bezeichnung</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="@*" mode="address">
    <xsl:call-template name="address">
      <xsl:with-param name="link" select="string(.)"/>
    </xsl:call-template>
  </xsl:template>

  <xsl:template match="@help" mode="address">
    <xsl:choose>
      <xsl:when test="contains(., ':') or starts-with(., '/')">
        <xsl:call-template name="address">
          <xsl:with-param name="link" select="string(.)"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:when test="normalize-space(.) != ''">
        <xsl:call-template name="address">
          <xsl:with-param name="link" select="concat(/menu/@helpbase, .)"/>
        </xsl:call-template>
      </xsl:when>
    </xsl:choose>
  </xsl:template>

  <!-- The address behind a link, or nothing when following it would run a script. Most links have no colon, hence no
       scheme to look at. -->
  <xsl:template name="address">
    <xsl:param name="link"/>
    <xsl:choose>
      <xsl:when test="contains($link, ':')">
        <xsl:call-template name="safe-address">
          <xsl:with-param name="link" select="$link"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:when test="normalize-space($link) != ''">
        <xsl:call-template name="from-root">
          <xsl:with-param name="link" select="$link"/>
        </xsl:call-template>
      </xsl:when>
    </xsl:choose>
  </xsl:template>

  <!-- Browsers pass over line breaks and tabs anywhere and over blanks in front; here, nothing that cannot be part of a
       scheme hides one. -->
  <xsl:template name="safe-address">
    <xsl:param name="link"/>
    <xsl:variable name="prefix" select="translate(substring-before($link, ':'), $capitals, $small-letters)"/>
    <xsl:variable name="scheme" select="translate($prefix, translate($prefix, $scheme-characters, ''), '')"/>
    <xsl:variable name="is-path" select="contains(translate($prefix, '?#', '//'), '/')"/>
    <xsl:if test="$is-path or not(contains($unsafe-schemes, concat('|', $scheme, '|')))">
      <xsl:call-template name="from-root">
        <xsl:with-param name="link" select="$link"/>
      </xsl:call-template>
    </xsl:if>
  </xsl:template>

  <xsl:template name="from-root">
    <xsl:param name="link"/>
    <xsl:if test="starts-with($link, '/') and not(starts-with($link, '//'))">
      <xsl:value-of select="$root"/>
    </xsl:if>
    <xsl:value-of select="translate($link, $link-control-codes, $characters)"/>
  </xsl:template>

  <xsl:template name="hints">
    <footer class="hints">
      <p>
        <kbd>←</kbd>
        <kbd>→</kbd>
        <xsl:text> Menüpunkt wechseln</xsl:text>
      </p>
      <p>
        <kbd>↓</kbd>
        <kbd>↑</kbd>
        <xsl:text> im offenen Untermenü</xsl:text>
      </p>
      <p>
        <kbd>Pos1</kbd>
        <kbd>Ende</kbd>
        <xsl:text> Anfang und Ende</xsl:text>
      </p>
      <p>
        <kbd>Esc</kbd>
        <xsl:text> Untermenü schließen</xsl:text>
      </p>
    </footer>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>
</xsl:stylesheet>
