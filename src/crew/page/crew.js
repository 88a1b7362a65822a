// Shows each message of the live socket as it comes; the socket carries the code the page
// was opened with, or the cookie that load set.
(function () {
    const code = new URLSearchParams(location.search).get("code") || "";
    const socket = new WebSocket("ws://" + location.host + "/live?code=" + encodeURIComponent(code));
    const status = document.getElementById("status");
    const live = document.getElementById("live");
    socket.onmessage = function (event) {
        const snapshot = JSON.parse(event.data);
        status.textContent = snapshot.status.text;
        live.textContent = JSON.stringify(snapshot, null, 2);
    };
    socket.onclose = function () {
        status.textContent = "The crew view is not reachable.";
    };
})();
