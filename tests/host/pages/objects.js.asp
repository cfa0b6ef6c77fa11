<%@ Language=JScript CodePage=65001 %>
<%
// The same from JScript, with functions of the other language.
var names = [];
for (var e = new Enumerator(Request.QueryString); !e.atEnd(); e.moveNext()) names.push(e.item());
%>
names: <%= names.join() %>
q: <%= Request.QueryString("q") %>, <%= Request.QueryString("q").Count %>, <%= Request.QueryString("q")(2) %>
none: <%= typeof Request.QueryString("none") %>
<% for (var i = 0; i < 3; i++) { %><b><%= i %></b><% } %>
<% if (Request.ServerVariables("REQUEST_METHOD") == "POST") { %>
posted <%= String(Request.Form("word")).length %>
<% } else { %>
not posted
<% } %>
twice: <%= twice(21) %>, <%= own(4) %>
<%
try { Server.MapPath("..\\.."); } catch (error) { Response.Write("error " + (error.number & 0xFFFF) + "\n"); }
Session.Contents.Item("kept") = "in the session";
Response.Write(Session("Kept") + "\n");
try { Session.Contents.Item("object") = Response; } catch (error) { Response.Write("error " + (error.number & 0xFFFF) + "\n"); }
var functions = Server.CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS");
Response.Write(functions.STRINGS.Capitalize("the title of é") + "\n");
try { Response.End(); } catch (error) { Response.Write("not seen"); }
%>
not seen
<script runat="server" language="VBScript">
Function twice(x)
  twice = x * 2
End Function
</script>
<SCRIPT language="JScript" RUNAT="Server">
function own(x) { return x * x; }
</SCRIPT>
