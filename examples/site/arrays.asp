<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include file="shared/layout.inc" -->
<!--#include file="shared/files.inc" -->
<!--#include file="shared/source.inc" -->
<%
' A line of a result: a value, or the elements of an array.
Sub Show(label, value)
  Dim element
  Response.Write "<p class=""shown""><span>" & label & "</span> "
  If IsArray(value) Then
    For Each element In value
      Response.Write "<code>" & Server.HTMLEncode(element) & "</code> "
    Next
  Else
    Response.Write "<code>" & Server.HTMLEncode(value) & "</code>"
  End If
  Response.Write "</p>" & vbCrLf
End Sub

BeginPage "Arrays that grow and shrink", _
  "A page's own arrays as stacks and queues, cut and joined, and put in order. " & _
  "All of it happens in the variable of the page."

BeginExample "Stack and queue", "snippets/arrays_stack.inc", _
  "No <code>ReDim</code> in sight: an array without elements is a fine beginning."
%>
<!--#include file="snippets/arrays_stack.inc" -->
<%
EndExample
BeginExample "Parts", "snippets/arrays_parts.inc", _
  "Take some elements out, or put others in their place. Negative positions count from the end."
%>
<!--#include file="snippets/arrays_parts.inc" -->
<%
EndExample
BeginExample "Order", "snippets/arrays_sort.inc", _
  "Arrays by number or text, dictionaries by key or item. Equal elements keep their order."
%>
<!--#include file="snippets/arrays_sort.inc" -->
<%
EndExample
BeginExample "Greatest, least, later", "snippets/arrays_max.inc", _
  "As many values as there are."
%>
<!--#include file="snippets/arrays_max.inc" -->
<%
EndExample
EndPage
%>
