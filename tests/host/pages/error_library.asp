<%
Dim functions
Set functions = Server.CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")

functions.JSON.Decode "{"
%>
