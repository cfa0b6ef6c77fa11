<%@ Language="JScript" CodePage="65001" %>
<!--#include file="shared/layout.inc" -->
<!--#include file="shared/files.inc" -->
<!--#include file="shared/source.inc" -->
<!--#include file="shared/log.inc" -->
<%
BeginPage("The other language",
  "The same objects from a page in JScript. What a member hands back is a value; the language " +
  "passes no variables that a component could write to.");

BeginExample("Objects", "snippets/jscript_objects.inc",
  "Dictionaries are read with <code>Item</code>, arrays through <code>VBArray</code>.");
%>
<!--#include file="snippets/jscript_objects.inc" -->
<%
EndExample();
// A log needs no lock. This page has one because it shows its own lines, and shows them together.
Application.Lock();
BeginExample("Logging", "snippets/jscript_logging.inc",
  "What <code>catch</code> caught goes to the log as an error.");
%>
<!--#include file="snippets/jscript_logging.inc" -->
<%
WriteLogLines(LogOfRun(logger, banner), banner);
Application.Unlock();
EndExample();
EndPage();
%>
