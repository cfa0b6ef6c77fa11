<%@ Language="VBScript" CodePage=65001 %>
<%
Option Explicit
Dim logger, stamp
Set logger = Server.CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
logger.WriteASPStart
logger.WriteLog 2, "Loading the report", 1, stamp
logger.StartGroup 2
logger.WriteParam 2, "Report", Request.QueryString("report")
logger.EndGroup 2
logger.WriteASPEnd
Response.Charset = "utf-8"
%><!DOCTYPE html>
<html lang="en">
<title>A page that logs its run</title>
<h1>A page that logs its run</h1>
<p>The log is in <code><%= Server.HTMLEncode(logger.Path) %></code>.</p>
<p>Its first stamp: <code><%= Server.HTMLEncode(stamp) %></code></p>
</html>
