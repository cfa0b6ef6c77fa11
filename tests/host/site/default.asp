<% Session("visits") = Session("visits") + 1 %>visits <%= Session("visits") %>
