<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include file="shared/layout.inc" -->
<!--#include file="shared/files.inc" -->
<!--#include file="shared/source.inc" -->
<!--#include file="shared/log.inc" -->
<!--#include file="shared/report.inc" -->
<%
BeginPage "A server describes itself", _
  "When a page works here and fails there, the difference is in the report: settings, platform, " & _
  "drivers, versions, the request and the folders. Keep such a page to yourself; it tells a lot."

' A log needs no lock. This page has one because it shows its own lines, and shows them together.
Application.Lock
BeginExample "The whole report", "snippets/diagnostics.inc", _
  "One call writes it to the log. What follows is read from there."
%>
<!--#include file="snippets/diagnostics.inc" -->
<%
Dim parts
Set parts = PartsOfReport(LogOfRun(logger, banner), banner)
Application.Unlock
WriteContents parts
EndExample
%>
<div class="parts">
<% WriteParts parts %>
</div>
<% EndPage %>
