<%@ Language="JScript" %>
not seen
<% Response.Cookies("seen").Expires = "November 15, 2026 12:00:00";
   Response.Redirect("/elsewhere?x=1"); %>
