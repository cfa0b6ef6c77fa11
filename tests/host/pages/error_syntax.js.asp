<%@ LANGUAGE="JScript" %>
<% var x = 1;
   Response.Write(x;
%>
