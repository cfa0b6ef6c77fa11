<html>
<!--#include file="parts/tools.inc"-->
<% title "before" %>
<p>
<% If True Then
   Response.Write "in the page" & vbCrLf %>
  <!--#include file="parts/raises.inc"-->
<% End If %>
