<?xml version="1.0" encoding="UTF-8"?>
<!--
  Renders a test report (report.xml, as the tree writes it) as one HTML page: a summary of the verdicts at the
  top, then the tree as nested sections with a table per result and the pictures of graph results.

  Run with xsltproc, optionally with the string parameter lang set to ru:
    xsltproc -o report.html report.xsl report.xml
  The pictures are referred to as images/<name>, relative to the report, where the report writes them.

  A result item's verdict comes from its State text (the library's texts in English or Russian); an item with an
  IsValid attribute is an empty result, that is not tested. Any other State text is an error message.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="yes" doctype-system="about:legacy-compat"/>

  <xsl:param name="lang" select="'en'"/>
  <xsl:param name="imageFolder" select="'images/'"/>

  <!-- The texts of the page in both languages. -->
  <xsl:template name="text">
    <xsl:param name="key"/>
    <xsl:variable name="ru" select="$lang = 'ru'"/>
    <xsl:choose>
      <xsl:when test="$key = 'title'"><xsl:if test="$ru">Протокол испытаний</xsl:if><xsl:if test="not($ru)">Test report</xsl:if></xsl:when>
      <xsl:when test="$key = 'summary'"><xsl:if test="$ru">Итоги</xsl:if><xsl:if test="not($ru)">Summary</xsl:if></xsl:when>
      <xsl:when test="$key = 'tests'"><xsl:if test="$ru">Проверки</xsl:if><xsl:if test="not($ru)">Tests</xsl:if></xsl:when>
      <xsl:when test="$key = 'results'"><xsl:if test="$ru">Результаты</xsl:if><xsl:if test="not($ru)">Results</xsl:if></xsl:when>
      <xsl:when test="$key = 'total'"><xsl:if test="$ru">всего</xsl:if><xsl:if test="not($ru)">total</xsl:if></xsl:when>
      <xsl:when test="$key = 'ok'"><xsl:if test="$ru">норма</xsl:if><xsl:if test="not($ru)">ok</xsl:if></xsl:when>
      <xsl:when test="$key = 'notok'"><xsl:if test="$ru">не в норме</xsl:if><xsl:if test="not($ru)">not ok</xsl:if></xsl:when>
      <xsl:when test="$key = 'error'"><xsl:if test="$ru">ошибка</xsl:if><xsl:if test="not($ru)">error</xsl:if></xsl:when>
      <xsl:when test="$key = 'empty'"><xsl:if test="$ru">не проводилась</xsl:if><xsl:if test="not($ru)">not tested</xsl:if></xsl:when>
      <xsl:when test="$key = 'tests_ok'"><xsl:if test="$ru">в норме</xsl:if><xsl:if test="not($ru)">passed</xsl:if></xsl:when>
      <xsl:when test="$key = 'tests_notok'"><xsl:if test="$ru">не в норме</xsl:if><xsl:if test="not($ru)">failed</xsl:if></xsl:when>
      <xsl:when test="$key = 'tests_error'"><xsl:if test="$ru">с ошибкой</xsl:if><xsl:if test="not($ru)">with errors</xsl:if></xsl:when>
      <xsl:when test="$key = 'tests_empty'"><xsl:if test="$ru">не проведены</xsl:if><xsl:if test="not($ru)">not tested</xsl:if></xsl:when>
      <xsl:when test="$key = 'key'"><xsl:if test="$ru">Точка</xsl:if><xsl:if test="not($ru)">Point</xsl:if></xsl:when>
      <xsl:when test="$key = 'setting'"><xsl:if test="$ru">Уставка</xsl:if><xsl:if test="not($ru)">Setting</xsl:if></xsl:when>
      <xsl:when test="$key = 'measured'"><xsl:if test="$ru">Измерено</xsl:if><xsl:if test="not($ru)">Measured</xsl:if></xsl:when>
      <xsl:when test="$key = 'deviation'"><xsl:if test="$ru">Отклонение</xsl:if><xsl:if test="not($ru)">Deviation</xsl:if></xsl:when>
      <xsl:when test="$key = 'state'"><xsl:if test="$ru">Оценка</xsl:if><xsl:if test="not($ru)">Verdict</xsl:if></xsl:when>
      <xsl:when test="$key = 'started'"><xsl:if test="$ru">Начало</xsl:if><xsl:if test="not($ru)">Started</xsl:if></xsl:when>
      <xsl:when test="$key = 'ended'"><xsl:if test="$ru">конец</xsl:if><xsl:if test="not($ru)">ended</xsl:if></xsl:when>
      <xsl:when test="$key = 'elapsed'"><xsl:if test="$ru">длительность</xsl:if><xsl:if test="not($ru)">took</xsl:if></xsl:when>
      <xsl:when test="$key = 'notRun'"><xsl:if test="$ru">не запускалась</xsl:if><xsl:if test="not($ru)">not run</xsl:if></xsl:when>
      <xsl:when test="$key = 'stoppedDuring'"><xsl:if test="$ru">Испытание остановлено во время проверки</xsl:if><xsl:if test="not($ru)">The run was stopped during the test</xsl:if></xsl:when>
      <xsl:when test="$key = 'stoppedAfter'"><xsl:if test="$ru">Испытание остановлено после проверки</xsl:if><xsl:if test="not($ru)">The run was stopped after the test</xsl:if></xsl:when>
      <xsl:when test="$key = 'notTestedPoints'"><xsl:if test="$ru">точек не проверено</xsl:if><xsl:if test="not($ru)">points not tested</xsl:if></xsl:when>
      <xsl:when test="$key = 'noResult'"><xsl:if test="$ru">нет результата</xsl:if><xsl:if test="not($ru)">no result</xsl:if></xsl:when>
      <xsl:when test="$key = 'Settings'"><xsl:if test="$ru">Уставки</xsl:if><xsl:if test="not($ru)">Settings</xsl:if></xsl:when>
      <xsl:when test="$key = 'Parameters'"><xsl:if test="$ru">Параметры</xsl:if><xsl:if test="not($ru)">Parameters</xsl:if></xsl:when>
      <xsl:when test="$key = 'Descriptors'"><xsl:if test="$ru">Описание</xsl:if><xsl:if test="not($ru)">Description</xsl:if></xsl:when>
      <xsl:when test="$key = 'value'"><xsl:if test="$ru">Значение</xsl:if><xsl:if test="not($ru)">Value</xsl:if></xsl:when>
      <xsl:when test="$key = 'measure'"><xsl:if test="$ru">Ед. изм.</xsl:if><xsl:if test="not($ru)">Unit</xsl:if></xsl:when>
      <xsl:when test="$key = 'formula'"><xsl:if test="$ru">Формула</xsl:if><xsl:if test="not($ru)">Formula</xsl:if></xsl:when>
      <xsl:otherwise><xsl:value-of select="$key"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The verdict class of one result item or record: ok, notok, error or empty. -->
  <xsl:template name="verdict">
    <xsl:param name="item" select="."/>
    <xsl:variable name="state" select="string($item/@State)"/>
    <xsl:choose>
      <xsl:when test="$item/@IsValid or $state = '' or $state = 'not tested' or $state = 'не проводилась'">empty</xsl:when>
      <xsl:when test="$state = 'ok' or $state = 'норма'">ok</xsl:when>
      <xsl:when test="$state = '?not ok' or $state = '?не в норме'">notok</xsl:when>
      <xsl:otherwise>error</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The worst verdict of result `items`, where result `units` without items (no value) count as not tested, and
       so do tests among `cut` that did not measure every point: what they measured never makes them pass. -->
  <xsl:template name="worstVerdict">
    <xsl:param name="items"/>
    <xsl:param name="units"/>
    <xsl:param name="cut" select="/.."/>
    <xsl:choose>
      <xsl:when test="$items[not(@IsValid)][@State = '?not ok' or @State = '?не в норме']">notok</xsl:when>
      <xsl:when test="$items[not(@IsValid)][not(@State = 'ok' or @State = 'норма' or @State = '?not ok' or @State = '?не в норме' or @State = 'not tested' or @State = 'не проводилась' or string(@State) = '')]">error</xsl:when>
      <xsl:when test="$cut">empty</xsl:when>
      <xsl:when test="$items[@IsValid or @State = 'not tested' or @State = 'не проводилась' or string(@State) = '']">empty</xsl:when>
      <xsl:when test="$units[not(Items/Value)]">empty</xsl:when>
      <xsl:when test="$items">ok</xsl:when>
      <xsl:otherwise>empty</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- The verdict class of a test or any subtree: the worst of its results. -->
  <xsl:template name="subtreeVerdict">
    <xsl:param name="node" select="."/>
    <xsl:call-template name="worstVerdict">
      <xsl:with-param name="items" select="$node//Node[@DataType = 'ResultContainer']/Node/Items/Value"/>
      <xsl:with-param name="units" select="$node//Node[@DataType = 'ResultContainer']/Node"/>
      <xsl:with-param name="cut" select="$node/descendant-or-self::Node[@NotTestedPoints &gt; 0]"/>
    </xsl:call-template>
  </xsl:template>

  <xsl:template name="badge">
    <xsl:param name="verdict"/>
    <xsl:param name="label"/>
    <span class="badge {$verdict}">
      <xsl:choose>
        <xsl:when test="string($label) != ''"><xsl:value-of select="$label"/></xsl:when>
        <xsl:otherwise>
          <xsl:call-template name="text"><xsl:with-param name="key" select="$verdict"/></xsl:call-template>
        </xsl:otherwise>
      </xsl:choose>
    </span>
  </xsl:template>

  <!-- A number as a table shows it: at most four decimals; anything else as it stands. -->
  <xsl:template name="number">
    <xsl:param name="value"/>
    <xsl:choose>
      <xsl:when test="string(number($value)) != 'NaN'">
        <xsl:value-of select="format-number(number($value), '0.####')"/>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$value"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A deviation "relative / absolute" with the absolute part cut to four decimals. -->
  <xsl:template name="deviation">
    <xsl:param name="value"/>
    <xsl:choose>
      <xsl:when test="contains($value, ' / ')">
        <xsl:variable name="absolute" select="substring-after($value, ' / ')"/>
        <xsl:value-of select="substring-before($value, ' / ')"/>
        <xsl:text> / </xsl:text>
        <xsl:if test="starts-with($absolute, '+')">+</xsl:if>
        <xsl:call-template name="number">
          <xsl:with-param name="value" select="translate($absolute, '+', '')"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="$value"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template name="name">
    <xsl:param name="node" select="."/>
    <xsl:choose>
      <xsl:when test="string($node/@Description) != ''"><xsl:value-of select="$node/@Description"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="$node/@Id"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <xsl:template match="/">
    <xsl:variable name="title">
      <xsl:call-template name="text"><xsl:with-param name="key" select="'title'"/></xsl:call-template>
    </xsl:variable>
    <html lang="{$lang}">
      <head>
        <meta charset="UTF-8"/>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <title><xsl:value-of select="$title"/>: <xsl:call-template name="name"><xsl:with-param name="node" select="/*/Node[1]"/></xsl:call-template></title>
        <style>
          :root { --ok: #1e8e3e; --notok: #d93025; --error: #e8710a; --empty: #80868b; --line: #dadce0; }
          body { font-family: "Segoe UI", "DejaVu Sans", Helvetica, Arial, sans-serif; color: #202124;
                 background: #f6f7f9; margin: 0; line-height: 1.45; }
          main { max-width: 1100px; margin: 0 auto; padding: 1.5em 2em 3em; }
          h1 { font-size: 1.8em; margin: 0.2em 0 0.6em; }
          h1 small { display: block; font-size: 0.5em; color: #5f6368; font-weight: normal; letter-spacing: 0.05em;
                     text-transform: uppercase; }
          h2, h3, h4, h5, h6 { margin: 0 0 0.4em; display: flex; align-items: center; gap: 0.6em; flex-wrap: wrap; }
          h2 { font-size: 1.4em; } h3 { font-size: 1.2em; } h4, h5, h6 { font-size: 1.05em; }
          section.node { background: #fff; border: 1px solid var(--line); border-left: 6px solid var(--line);
                         border-radius: 8px; padding: 1em 1.2em; margin: 1em 0; }
          section.node section.node { background: #fcfcfd; }
          section.node.ok { border-left-color: var(--ok); }
          section.node.notok { border-left-color: var(--notok); }
          section.node.error { border-left-color: var(--error); }
          section.node.empty { border-left-color: var(--empty); }
          .second { color: #5f6368; font-weight: normal; font-size: 0.85em; }
          .times { color: #5f6368; font-size: 0.9em; margin: 0 0 0.6em; }
          .badge { display: inline-block; padding: 0.1em 0.65em; border-radius: 1em; font-size: 0.8rem;
                   font-weight: 600; color: #fff; white-space: nowrap; vertical-align: middle; }
          .badge.ok { background: var(--ok); } .badge.notok { background: var(--notok); }
          .badge.error { background: var(--error); } .badge.empty { background: var(--empty); }
          .summary { display: grid; grid-template-columns: repeat(auto-fit, minmax(10em, 1fr)); gap: 0.8em;
                     margin: 0 0 0.8em; }
          .tile { background: #fff; border: 1px solid var(--line); border-top: 5px solid var(--line);
                  border-radius: 8px; padding: 0.6em 0.9em; }
          .tile b { display: block; font-size: 1.9em; line-height: 1.1; }
          .tile span { color: #5f6368; font-size: 0.9em; }
          .tile.ok { border-top-color: var(--ok); } .tile.ok b { color: var(--ok); }
          .tile.notok { border-top-color: var(--notok); } .tile.notok b { color: var(--notok); }
          .tile.error { border-top-color: var(--error); } .tile.error b { color: var(--error); }
          .tile.empty { border-top-color: var(--empty); } .tile.empty b { color: var(--empty); }
          .resultsline { color: #5f6368; margin: 0 0 1.5em; }
          table { border-collapse: collapse; margin: 0.4em 0 0.8em; min-width: 50%; background: #fff; }
          th, td { border: 1px solid var(--line); padding: 0.3em 0.7em; text-align: left; vertical-align: top; }
          th { background: #f1f3f4; font-weight: 600; }
          td.num { text-align: right; font-variant-numeric: tabular-nums; }
          tr.ok td.state { color: var(--ok); font-weight: 600; }
          tr.notok td { background: #fce8e6; } tr.notok td.state { color: var(--notok); font-weight: 700; }
          tr.error td { background: #fef3e8; } tr.error td.state { color: var(--error); font-weight: 700; }
          tr.empty td { color: var(--empty); }
          .result { margin: 0.8em 0 1.2em; }
          .result h5, .result h6 { font-size: 1em; }
          .measure { color: #5f6368; font-weight: normal; }
          figure { margin: 0.5em 0; }
          figure img { max-width: 100%; height: auto; border: 1px solid var(--line); border-radius: 4px;
                       background: #fff; }
          table.values { min-width: 0; } table.values td:nth-child(2) { font-variant-numeric: tabular-nums; }
          .valueError { color: #b3261e; margin-left: 0.5em; } code { font-size: 0.95em; }
          details { margin: 0.3em 0 0.6em; } summary { cursor: pointer; color: #3c4043; font-weight: 600; }
          .inactive { color: var(--empty); }
          .stopped, .cut { border-left: 6px solid var(--error); background: #fef3e8; padding: 0.5em 0.9em;
                           border-radius: 4px; }
        </style>
      </head>
      <body>
        <main>
          <h1>
            <small><xsl:value-of select="$title"/></small>
            <xsl:call-template name="name"><xsl:with-param name="node" select="/*/Node[1]"/></xsl:call-template>
          </h1>
          <xsl:for-each select="//Node[@DataType = 'TestContainer'][@Stopped = 'true']">
            <p class="stopped">
              <xsl:call-template name="text"><xsl:with-param name="key" select="'stoppedDuring'"/></xsl:call-template>
              <xsl:text> </xsl:text>
              <a href="#{generate-id()}"><xsl:call-template name="name"/></a>
              <xsl:if test="@NotTestedPoints">
                <xsl:value-of select="concat(': ', @NotTestedPoints, ' ')"/>
                <xsl:call-template name="text"><xsl:with-param name="key" select="'notTestedPoints'"/></xsl:call-template>
              </xsl:if>
              <xsl:text>.</xsl:text>
            </p>
          </xsl:for-each>
          <xsl:for-each select="//Node[@DataType = 'TestContainer'][@StoppedAfter = 'true']">
            <p class="stopped">
              <xsl:call-template name="text"><xsl:with-param name="key" select="'stoppedAfter'"/></xsl:call-template>
              <xsl:text> </xsl:text>
              <a href="#{generate-id()}"><xsl:call-template name="name"/></a>
              <xsl:text>.</xsl:text>
            </p>
          </xsl:for-each>
          <xsl:call-template name="summary"/>
          <xsl:apply-templates select="/*/Node" mode="section">
            <xsl:with-param name="depth" select="2"/>
          </xsl:apply-templates>
        </main>
      </body>
    </html>
  </xsl:template>

  <!-- The counts at the top: tests by verdict, then result items by verdict. -->
  <xsl:template name="summary">
    <xsl:variable name="tests" select="//Node[@DataType = 'TestContainer']"/>
    <!-- One letter per test, so that counting a verdict is a matter of string lengths, not of recursion. -->
    <xsl:variable name="verdicts">
      <xsl:for-each select="$tests">
        <xsl:variable name="verdict">
          <xsl:call-template name="subtreeVerdict"/>
        </xsl:variable>
        <xsl:call-template name="verdictLetter"><xsl:with-param name="verdict" select="$verdict"/></xsl:call-template>
      </xsl:for-each>
    </xsl:variable>
    <xsl:variable name="items" select="//Node[@DataType = 'ResultContainer']/Node/Items/Value"/>
    <xsl:variable name="itemsOk" select="$items[not(@IsValid)][@State = 'ok' or @State = 'норма']"/>
    <xsl:variable name="itemsNotOk" select="$items[not(@IsValid)][@State = '?not ok' or @State = '?не в норме']"/>
    <xsl:variable name="itemsEmpty" select="$items[@IsValid or @State = 'not tested' or @State = 'не проводилась' or string(@State) = '']"/>
    <xsl:variable name="missing" select="count(//Node[@DataType = 'ResultContainer']/Node[not(Items/Value)])"/>
    <h2>
      <xsl:call-template name="text"><xsl:with-param name="key" select="'summary'"/></xsl:call-template>
    </h2>
    <div class="summary">
      <div class="tile">
        <b><xsl:value-of select="count($tests)"/></b>
        <span>
          <xsl:call-template name="text"><xsl:with-param name="key" select="'tests'"/></xsl:call-template>
          <xsl:text>, </xsl:text>
          <xsl:call-template name="text"><xsl:with-param name="key" select="'total'"/></xsl:call-template>
        </span>
      </div>
      <xsl:call-template name="tile">
        <xsl:with-param name="verdict" select="'ok'"/>
        <xsl:with-param name="verdicts" select="$verdicts"/>
      </xsl:call-template>
      <xsl:call-template name="tile">
        <xsl:with-param name="verdict" select="'notok'"/>
        <xsl:with-param name="verdicts" select="$verdicts"/>
      </xsl:call-template>
      <xsl:call-template name="tile">
        <xsl:with-param name="verdict" select="'error'"/>
        <xsl:with-param name="verdicts" select="$verdicts"/>
      </xsl:call-template>
      <xsl:call-template name="tile">
        <xsl:with-param name="verdict" select="'empty'"/>
        <xsl:with-param name="verdicts" select="$verdicts"/>
      </xsl:call-template>
    </div>
    <p class="resultsline">
      <xsl:call-template name="text"><xsl:with-param name="key" select="'results'"/></xsl:call-template>:
      <xsl:call-template name="countBadge">
        <xsl:with-param name="verdict" select="'ok'"/>
        <xsl:with-param name="count" select="count($itemsOk)"/>
      </xsl:call-template>
      <xsl:text> </xsl:text>
      <xsl:call-template name="countBadge">
        <xsl:with-param name="verdict" select="'notok'"/>
        <xsl:with-param name="count" select="count($itemsNotOk)"/>
      </xsl:call-template>
      <xsl:text> </xsl:text>
      <xsl:call-template name="countBadge">
        <xsl:with-param name="verdict" select="'error'"/>
        <xsl:with-param name="count" select="count($items) - count($itemsOk) - count($itemsNotOk) - count($itemsEmpty)"/>
      </xsl:call-template>
      <xsl:text> </xsl:text>
      <xsl:call-template name="countBadge">
        <xsl:with-param name="verdict" select="'empty'"/>
        <xsl:with-param name="count" select="count($itemsEmpty) + $missing"/>
      </xsl:call-template>
    </p>
  </xsl:template>

  <xsl:template name="countBadge">
    <xsl:param name="verdict"/>
    <xsl:param name="count"/>
    <xsl:variable name="label">
      <xsl:call-template name="text"><xsl:with-param name="key" select="$verdict"/></xsl:call-template>
    </xsl:variable>
    <xsl:call-template name="badge">
      <xsl:with-param name="verdict" select="$verdict"/>
      <xsl:with-param name="label" select="concat($count, ' ', $label)"/>
    </xsl:call-template>
  </xsl:template>

  <!-- One tile of the summary: how many tests have `verdict`, counted in the string `verdicts` of one letter per
       test. -->
  <xsl:template name="tile">
    <xsl:param name="verdict"/>
    <xsl:param name="verdicts"/>
    <xsl:variable name="letter">
      <xsl:call-template name="verdictLetter"><xsl:with-param name="verdict" select="$verdict"/></xsl:call-template>
    </xsl:variable>
    <div class="tile {$verdict}">
      <b><xsl:value-of select="string-length($verdicts) - string-length(translate($verdicts, $letter, ''))"/></b>
      <span><xsl:call-template name="text"><xsl:with-param name="key" select="concat('tests_', $verdict)"/></xsl:call-template></span>
    </div>
  </xsl:template>

  <xsl:template name="verdictLetter">
    <xsl:param name="verdict"/>
    <xsl:choose>
      <xsl:when test="$verdict = 'ok'">O</xsl:when>
      <xsl:when test="$verdict = 'notok'">N</xsl:when>
      <xsl:when test="$verdict = 'error'">E</xsl:when>
      <xsl:otherwise>M</xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A container of the tree: a section with a heading, its values, its results and the containers below. -->
  <xsl:template match="Node" mode="section">
    <xsl:param name="depth"/>
    <xsl:variable name="isTest" select="@DataType = 'TestContainer'"/>
    <xsl:variable name="verdict">
      <xsl:call-template name="subtreeVerdict"/>
    </xsl:variable>
    <xsl:variable name="level">
      <xsl:choose>
        <xsl:when test="$depth &gt; 6">6</xsl:when>
        <xsl:otherwise><xsl:value-of select="$depth"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <section class="node {$verdict}" id="{generate-id()}">
      <xsl:element name="h{$level}">
        <span><xsl:call-template name="name"/></span>
        <xsl:if test="string(@SecondText) != '' and @SecondText != @Description">
          <span class="second"><xsl:value-of select="@SecondText"/></span>
        </xsl:if>
        <xsl:if test="$isTest or .//Node[@DataType = 'TestContainer']">
          <xsl:choose>
            <xsl:when test="$isTest and not(@StartDate) and $verdict = 'empty'">
              <xsl:call-template name="badge">
                <xsl:with-param name="verdict" select="'empty'"/>
                <xsl:with-param name="label">
                  <xsl:call-template name="text"><xsl:with-param name="key" select="'notRun'"/></xsl:call-template>
                </xsl:with-param>
              </xsl:call-template>
            </xsl:when>
            <xsl:otherwise>
              <xsl:call-template name="badge">
                <xsl:with-param name="verdict" select="$verdict"/>
                <xsl:with-param name="label">
                  <xsl:call-template name="text"><xsl:with-param name="key" select="concat('tests_', $verdict)"/></xsl:call-template>
                </xsl:with-param>
              </xsl:call-template>
            </xsl:otherwise>
          </xsl:choose>
        </xsl:if>
      </xsl:element>
      <xsl:if test="@StartDate">
        <p class="times">
          <xsl:call-template name="text"><xsl:with-param name="key" select="'started'"/></xsl:call-template>
          <xsl:value-of select="concat(' ', @StartDate, ' ', @StartTime, ', ')"/>
          <xsl:call-template name="text"><xsl:with-param name="key" select="'ended'"/></xsl:call-template>
          <xsl:value-of select="concat(' ', @EndDate, ' ', @EndTime, ', ')"/>
          <xsl:call-template name="text"><xsl:with-param name="key" select="'elapsed'"/></xsl:call-template>
          <xsl:value-of select="concat(' ', @ElapsedTime)"/>
        </p>
      </xsl:if>
      <xsl:if test="$isTest and @NotTestedPoints &gt; 0">
        <p class="cut">
          <xsl:value-of select="concat(@NotTestedPoints, ' ')"/>
          <xsl:call-template name="text"><xsl:with-param name="key" select="'notTestedPoints'"/></xsl:call-template>
        </p>
      </xsl:if>
      <xsl:apply-templates select="Node[@DataType = 'ValueContainer']" mode="values"/>
      <xsl:apply-templates select="Node[@DataType = 'ResultContainer']/Node" mode="result">
        <xsl:with-param name="depth" select="$depth + 1"/>
      </xsl:apply-templates>
      <xsl:call-template name="children">
        <xsl:with-param name="depth" select="$depth + 1"/>
      </xsl:call-template>
    </section>
  </xsl:template>

  <!-- The containers below a node; collection sections (Collection, Tests, Defends) only group, so their
       children go straight below the node. -->
  <xsl:template name="children">
    <xsl:param name="depth"/>
    <xsl:for-each select="Node[Node][not(@DataType = 'ValueContainer' or @DataType = 'ResultContainer')]">
      <xsl:choose>
        <xsl:when test="@DataType = 'CollectionContainer' or @DataType = 'TestCollectionContainer' or @DataType = 'DefendCollectionContainer'">
          <xsl:call-template name="children">
            <xsl:with-param name="depth" select="$depth"/>
          </xsl:call-template>
        </xsl:when>
        <xsl:otherwise>
          <xsl:apply-templates select="." mode="section">
            <xsl:with-param name="depth" select="$depth"/>
          </xsl:apply-templates>
        </xsl:otherwise>
      </xsl:choose>
    </xsl:for-each>
  </xsl:template>

  <!-- A section of values (settings, parameters): a table of the units that carry something to show, with the
       value as the report shows it, its measure, and the formula where one gives the value. Settings are open,
       so a printed report shows what a test was set to; other sections are folded. -->
  <xsl:template match="Node" mode="values">
    <xsl:variable name="units" select="Node[not(@IsActive = 'false')][@Value or @Formula or @Error or normalize-space(text()) or @*[not(name() = 'Id' or name() = 'Description' or name() = 'DataType' or name() = 'SecondText' or name() = 'IsActive' or name() = 'Mode')]]"/>
    <xsl:if test="$units">
      <details class="values">
        <xsl:if test="@Id = 'Settings'"><xsl:attribute name="open">open</xsl:attribute></xsl:if>
        <summary>
          <xsl:call-template name="text"><xsl:with-param name="key" select="@Id"/></xsl:call-template>
          <xsl:value-of select="concat(' (', count($units), ')')"/>
        </summary>
        <table class="values">
          <tr>
            <th><xsl:call-template name="text"><xsl:with-param name="key" select="@Id"/></xsl:call-template></th>
            <th><xsl:call-template name="text"><xsl:with-param name="key" select="'value'"/></xsl:call-template></th>
            <th><xsl:call-template name="text"><xsl:with-param name="key" select="'measure'"/></xsl:call-template></th>
            <xsl:if test="$units/@Formula">
              <th><xsl:call-template name="text"><xsl:with-param name="key" select="'formula'"/></xsl:call-template></th>
            </xsl:if>
          </tr>
          <xsl:for-each select="$units">
            <tr>
              <td><xsl:call-template name="name"/></td>
              <td>
                <xsl:choose>
                  <xsl:when test="@Value"><xsl:value-of select="@Value"/></xsl:when>
                  <xsl:otherwise><xsl:value-of select="normalize-space(text())"/></xsl:otherwise>
                </xsl:choose>
                <xsl:for-each select="@*[not(name() = 'Id' or name() = 'Description' or name() = 'DataType' or name() = 'SecondText' or name() = 'IsActive' or name() = 'Mode' or name() = 'Value' or name() = 'Measure' or name() = 'Formula' or name() = 'Error')]">
                  <xsl:if test="position() &gt; 1 or ../@Value or normalize-space(../text())"><xsl:text>; </xsl:text></xsl:if>
                  <xsl:value-of select="concat(name(), ': ', .)"/>
                </xsl:for-each>
                <xsl:if test="@Error">
                  <span class="valueError">
                    <xsl:call-template name="text"><xsl:with-param name="key" select="'error'"/></xsl:call-template>
                    <xsl:value-of select="concat(': ', @Error)"/>
                  </span>
                </xsl:if>
              </td>
              <td><xsl:value-of select="@Measure"/></td>
              <xsl:if test="$units/@Formula">
                <td><xsl:if test="@Formula"><code><xsl:value-of select="@Formula"/></code></xsl:if></td>
              </xsl:if>
            </tr>
          </xsl:for-each>
        </table>
      </details>
    </xsl:if>
  </xsl:template>

  <!-- One result unit: a heading, then a table of its items; a graph result adds a table per item's table and
       its picture. -->
  <xsl:template match="Node" mode="result">
    <xsl:param name="depth"/>
    <xsl:variable name="level">
      <xsl:choose>
        <xsl:when test="$depth &gt; 6">6</xsl:when>
        <xsl:otherwise><xsl:value-of select="$depth"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:variable name="verdict">
      <xsl:call-template name="worstVerdict">
        <xsl:with-param name="items" select="Items/Value"/>
        <xsl:with-param name="units" select="."/>
      </xsl:call-template>
    </xsl:variable>
    <div class="result">
      <xsl:element name="h{$level}">
        <span><xsl:call-template name="name"/><xsl:if test="@Measure"><span class="measure">, <xsl:value-of select="@Measure"/></span></xsl:if></span>
        <xsl:choose>
          <xsl:when test="not(Items/Value)">
            <xsl:call-template name="badge">
              <xsl:with-param name="verdict" select="'empty'"/>
              <xsl:with-param name="label">
                <xsl:call-template name="text"><xsl:with-param name="key" select="'noResult'"/></xsl:call-template>
              </xsl:with-param>
            </xsl:call-template>
          </xsl:when>
          <xsl:otherwise>
            <xsl:call-template name="badge"><xsl:with-param name="verdict" select="$verdict"/></xsl:call-template>
          </xsl:otherwise>
        </xsl:choose>
      </xsl:element>
      <xsl:choose>
        <xsl:when test="Items/Value/Table">
          <xsl:apply-templates select="Items/Value" mode="graphItem"/>
        </xsl:when>
        <xsl:when test="Items/Value">
          <xsl:call-template name="itemsTable"/>
        </xsl:when>
      </xsl:choose>
      <xsl:if test="string(@Graph) != ''">
        <figure>
          <img src="{concat($imageFolder, @Graph)}">
            <xsl:attribute name="alt"><xsl:call-template name="name"/></xsl:attribute>
          </img>
        </figure>
      </xsl:if>
    </div>
  </xsl:template>

  <!-- The items of a numeric or text result: key, setting, measured value, deviation, verdict. -->
  <xsl:template name="itemsTable">
    <xsl:variable name="setting" select="Value"/>
    <xsl:variable name="hasDeviation" select="Items/Value/@Deviation"/>
    <table>
      <tr>
        <th><xsl:call-template name="text"><xsl:with-param name="key" select="'key'"/></xsl:call-template></th>
        <xsl:if test="$setting">
          <th><xsl:call-template name="text"><xsl:with-param name="key" select="'setting'"/></xsl:call-template></th>
        </xsl:if>
        <th><xsl:call-template name="text"><xsl:with-param name="key" select="'measured'"/></xsl:call-template></th>
        <xsl:if test="$hasDeviation">
          <th><xsl:call-template name="text"><xsl:with-param name="key" select="'deviation'"/></xsl:call-template></th>
        </xsl:if>
        <th><xsl:call-template name="text"><xsl:with-param name="key" select="'state'"/></xsl:call-template></th>
      </tr>
      <xsl:for-each select="Items/Value">
        <xsl:variable name="verdict"><xsl:call-template name="verdict"/></xsl:variable>
        <tr class="{$verdict}">
          <td><xsl:value-of select="@Key"/></td>
          <xsl:if test="$setting"><td class="num"><xsl:call-template name="number"><xsl:with-param name="value" select="$setting"/></xsl:call-template></td></xsl:if>
          <td class="num"><xsl:call-template name="number"><xsl:with-param name="value" select="string(.)"/></xsl:call-template></td>
          <xsl:if test="$hasDeviation"><td class="num"><xsl:call-template name="deviation"><xsl:with-param name="value" select="string(@Deviation)"/></xsl:call-template></td></xsl:if>
          <td class="state"><xsl:call-template name="stateText"><xsl:with-param name="verdict" select="$verdict"/></xsl:call-template></td>
        </tr>
      </xsl:for-each>
    </table>
  </xsl:template>

  <!-- The state as the report tells it, without the library's leading '?' mark of a bad verdict. -->
  <xsl:template name="stateText">
    <xsl:param name="verdict"/>
    <xsl:choose>
      <xsl:when test="string(@State) = ''">
        <xsl:call-template name="text"><xsl:with-param name="key" select="$verdict"/></xsl:call-template>
      </xsl:when>
      <xsl:when test="starts-with(@State, '?')"><xsl:value-of select="substring(@State, 2)"/></xsl:when>
      <xsl:otherwise><xsl:value-of select="@State"/></xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- One item of a graph result: its verdict and its tables of records. -->
  <xsl:template match="Value" mode="graphItem">
    <xsl:variable name="verdict"><xsl:call-template name="verdict"/></xsl:variable>
    <p>
      <b><xsl:value-of select="@Key"/></b>
      <xsl:text> </xsl:text>
      <xsl:call-template name="badge"><xsl:with-param name="verdict" select="$verdict"/></xsl:call-template>
    </p>
    <xsl:for-each select="Table">
      <xsl:variable name="hasSetting" select="Result/@YSet"/>
      <xsl:variable name="hasDeviation" select="Result/@YDeviation"/>
      <table>
        <tr>
          <th>
            <xsl:value-of select="@DescriptionX"/>
            <xsl:if test="string(@MeasureX) != ''">, <xsl:value-of select="@MeasureX"/></xsl:if>
          </th>
          <xsl:if test="$hasSetting">
            <th>
              <xsl:call-template name="text"><xsl:with-param name="key" select="'setting'"/></xsl:call-template>:
              <xsl:value-of select="@DescriptionY"/>
              <xsl:if test="string(@MeasureY) != ''">, <xsl:value-of select="@MeasureY"/></xsl:if>
            </th>
          </xsl:if>
          <th>
            <xsl:call-template name="text"><xsl:with-param name="key" select="'measured'"/></xsl:call-template>:
            <xsl:value-of select="@DescriptionY"/>
            <xsl:if test="string(@MeasureY) != ''">, <xsl:value-of select="@MeasureY"/></xsl:if>
          </th>
          <xsl:if test="$hasDeviation">
            <th><xsl:call-template name="text"><xsl:with-param name="key" select="'deviation'"/></xsl:call-template></th>
          </xsl:if>
          <th><xsl:call-template name="text"><xsl:with-param name="key" select="'state'"/></xsl:call-template></th>
        </tr>
        <xsl:for-each select="Result">
          <xsl:variable name="rowVerdict"><xsl:call-template name="verdict"/></xsl:variable>
          <tr class="{$rowVerdict}">
            <td class="num"><xsl:call-template name="number"><xsl:with-param name="value" select="string(@XSet)"/></xsl:call-template></td>
            <xsl:if test="$hasSetting"><td class="num"><xsl:call-template name="number"><xsl:with-param name="value" select="string(@YSet)"/></xsl:call-template></td></xsl:if>
            <td class="num"><xsl:call-template name="number"><xsl:with-param name="value" select="string(@YMeasurment)"/></xsl:call-template></td>
            <xsl:if test="$hasDeviation"><td class="num"><xsl:call-template name="deviation"><xsl:with-param name="value" select="string(@YDeviation)"/></xsl:call-template></td></xsl:if>
            <td class="state"><xsl:call-template name="stateText"><xsl:with-param name="verdict" select="$rowVerdict"/></xsl:call-template></td>
          </tr>
        </xsl:for-each>
      </table>
    </xsl:for-each>
  </xsl:template>
</xsl:stylesheet>
