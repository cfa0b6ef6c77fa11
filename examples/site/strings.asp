<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include file="shared/layout.inc" -->
<!--#include file="shared/files.inc" -->
<!--#include file="shared/source.inc" -->
<%
BeginPage "Strings without the tedium", _
  "What pages do to texts all day: lay out dates, spell numbers, and make what a visitor typed safe " & _
  "for the place where it goes."

BeginExample "Dates in any layout", "snippets/strings_dates.inc", _
  "Tokens begin with <code>#</code>; everything else is text. Names are English under every locale."
%>
<!--#include file="snippets/strings_dates.inc" -->
<%
EndExample
BeginExample "Safe texts", "snippets/strings_safe.inc", _
  "One function for each place. The first column names it."
%>
<!--#include file="snippets/strings_safe.inc" -->
<form method="get" class="row">
  <label for="text">Your own text</label>
  <input type="text" id="text" name="text" value="<%= Server.HTMLEncode(text) %>">
  <button>Make it safe</button>
</form>
<%
EndExample
BeginExample "Numbers", "snippets/strings_numbers.inc", _
  "In words, as sizes, and padded to a width."
%>
<!--#include file="snippets/strings_numbers.inc" -->
<%
EndExample
BeginExample "A string builder", "snippets/strings_builder.inc", _
  "Appending to a string copies it each time. The builder grows its buffer by doubling, so a long " & _
  "page costs what it has in characters."
%>
<!--#include file="snippets/strings_builder.inc" -->
<%
EndExample
EndPage
%>
