<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include file="shared/layout.inc" -->
<!--#include file="shared/files.inc" -->
<!--#include file="shared/source.inc" -->
<!--#include file="shared/log.inc" -->
<%
BeginPage "A page that keeps a log", _
  "One object, created at the top of a page, writes down what the page did: who asked for what, " & _
  "which values it worked with, and the error that nobody saw."

' A log needs no lock. This page has one because it shows its own lines, and shows them together.
Application.Lock
BeginExample "Log a run", "snippets/logging.inc", _
  "The logger takes the request from the page by itself. Its file is <code>LOGS\LOG.TXT</code> " & _
  "beside the page, and becomes a dated archive when it has grown to its limit."
%>
<!--#include file="snippets/logging.inc" -->
<%
Dim run
run = LogOfRun(logger, banner)
Application.Unlock
WriteLogLines run, banner
EndExample
%>
<form method="get" class="row">
  <label for="title">Run it with a title of your own, in any language</label>
  <input type="text" id="title" name="title" value="<%= Server.HTMLEncode(title) %>">
  <button>Run the page</button>
</form>
<section class="example">
  <h2>The same lines in the file</h2>
  <p>Each line tells when, where and for whom it was written: time, machine, account, process,
    client and page. So the lines of one visit are found in a log that many pages share.</p>
  <figure class="result wide">
    <figcaption><%= Server.HTMLEncode(logger.Path & logger.FileName) %></figcaption>
    <pre class="file" tabindex="0" role="region" aria-label="The log file"><%= Server.HTMLEncode(run) %></pre>
  </figure>
</section>
<section>
  <h2>What else is in the library</h2>
  <ul class="cards">
    <li><a href="json.asp"><b>JSON</b> Decode to dictionaries and arrays, change them, encode them
      again.</a></li>
    <li><a href="strings.asp"><b>Strings</b> Dates in any layout, numbers in words, texts made safe for
      HTML, URLs, SQL and file names.</a></li>
    <li><a href="arrays.asp"><b>Arrays</b> Push and pop, slice and splice; sort arrays and
      dictionaries.</a></li>
    <li><a href="jscript.asp"><b>JScript</b> The same objects from the other language.</a></li>
    <li><a href="diagnostics.asp"><b>Diagnostics</b> The whole report on a server with one call.</a></li>
  </ul>
</section>
<% EndPage %>
