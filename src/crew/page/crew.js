// The crew view: one live socket that brings a whole snapshot of the weather and the open race
// logs with every feed line, drawn into the page as it comes. Everything that comes from the
// program goes into the page as text, never as markup.
(function () {
    "use strict";

    // The code is in the address the first time; after that the cookie set by the page load
    // rides along with the socket's handshake. The cookie is out of the script's reach, so an
    // address without a code just leaves the code out.
    const code = new URLSearchParams(location.search).get("code") || "";
    const socketUrl = (location.protocol === "https:" ? "wss://" : "ws://") + location.host +
        "/live" + (code ? "?code=" + encodeURIComponent(code) : "");

    const FirstRetryMs = 250;
    const LongestRetryMs = 5000;

    const status = document.getElementById("status");
    const quantitiesBox = document.getElementById("quantities");
    const timeLine = document.getElementById("time");
    const logsBox = document.getElementById("logs");
    const noLogs = document.getElementById("nologs");

    let retryMs = FirstRetryMs;
    let quantityValues = new Map(); // name -> the element holding its value
    let quantityNames = "";

    function element(tag, className, text) {
        const node = document.createElement(tag);
        if (className)
            node.className = className;
        if (text !== undefined)
            node.textContent = text;
        return node;
    }

    function orDash(text) {
        return text === undefined || text === null || text === "" ? "\u2014" : String(text);
    }

    // Times come as ISO text with the program's local offset; the crew wants the clock time.
    function clockTime(iso) {
        if (!iso)
            return "";
        const time = new Date(iso);
        if (isNaN(time.getTime()))
            return iso;
        return time.toLocaleTimeString([], { hour: "2-digit", minute: "2-digit", second: "2-digit" });
    }

    function showState(state, text) {
        status.className = state;
        status.textContent = text;
        document.body.classList.toggle("stale", state === "stale");
        document.body.classList.toggle("reconnecting", state === "reconnecting");
    }

    function showStatus(snapshotStatus) {
        if (!snapshotStatus)
            return;
        showState(snapshotStatus.live ? "live" : "stale", snapshotStatus.text || "");
    }

    // The fifteen boxes are made once, and again only if the program ever names others.
    function showQuantities(list) {
        if (!Array.isArray(list))
            return;
        const names = list.map(function (q) { return q.name; }).join("\n");
        if (names !== quantityNames) {
            quantityNames = names;
            quantityValues = new Map();
            quantitiesBox.replaceChildren();
            for (const quantity of list) {
                const box = element("div", "quantity");
                box.dataset.name = quantity.name;
                box.id = "q-" + quantity.name;
                // The status line's labels end in "="; a box needs only the name.
                const label = String(quantity.label || quantity.name).replace(/\s*=\s*$/, "");
                box.append(element("span", "label", label), element("span", "value"));
                quantitiesBox.append(box);
                quantityValues.set(quantity.name, box.lastChild);
            }
        }
        for (const quantity of list) {
            const value = quantityValues.get(quantity.name);
            if (value)
                value.textContent = orDash(quantity.value);
        }
    }

    function field(list, className, label) {
        const value = element("dd", className);
        list.append(element("dt", className + "-label", label), value);
        return value;
    }

    function makeCard(slot) {
        const card = element("article", "log");
        card.dataset.slot = String(slot);
        card.id = "log-" + slot;
        const heading = element("h2");
        const flag = element("span", "flag", "STALE");
        flag.hidden = true;
        heading.append(element("span", "name"), flag);
        const list = element("dl");
        card.fields = {
            name: heading.firstChild,
            flag: flag,
            et: element("span", "et"),
            miss: element("span", "miss"),
            throttleStop: field(list, "ts", "Throttle stop"),
            targetEt: field(list, "target", "Target ET"),
            referenceRun: field(list, "ref", "Reference run"),
            aa: field(list, "aa", "AA used"),
            vp: field(list, "vp", "VP used"),
            line: element("p", "line"),
            outlook: element("p", "outlook"),
            updated: element("p", "updated"),
        };
        // The ET with the miss it is likely to stay within: "9.5620 ±0.004".
        const etRow = element("div", "etrow");
        etRow.append(card.fields.et, card.fields.miss);
        card.append(heading, element("div", "etlabel", "Predicted ET"), etRow, list,
                    card.fields.line, card.fields.outlook, card.fields.updated);
        return card;
    }

    // The log's reference run as the crew counts runs, from one.
    function runNumber(index) {
        return typeof index === "number" && index >= 0 ? String(index + 1) : "";
    }

    function fillCard(card, log) {
        const fields = card.fields;
        fields.name.textContent = orDash(log.name);
        fields.et.textContent = orDash(log.predictedEt);
        fields.miss.textContent = log.predictedEt ? log.likelyMiss || "" : "";
        fields.throttleStop.textContent = orDash(log.throttleStop);
        fields.targetEt.textContent = orDash(log.targetEt);
        fields.referenceRun.textContent = orDash(runNumber(log.referenceRun));
        fields.aa.textContent = orDash(log.aa);
        fields.vp.textContent = orDash(log.vp);
        fields.line.textContent = orDash(log.line);
        fields.outlook.textContent = log.outlook || "";
        fields.outlook.hidden = !log.outlook;
        fields.updated.textContent =
            log.updated ? "Updated " + clockTime(log.updated) : "Not published yet";
        fields.updated.dataset.time = log.updated || "";
        fields.flag.hidden = !log.stale;
        card.classList.toggle("stale", !!log.stale);
    }

    // One card per open log in slot order; a card keeps its element while its slot stays
    // open, so the page does not jump under a thumb.
    function showLogs(list) {
        if (!Array.isArray(list))
            return;
        const sorted = list.slice().sort(function (a, b) { return a.slot - b.slot; });
        const kept = new Map();
        for (const card of Array.from(logsBox.children))
            kept.set(card.dataset.slot, card);
        const cards = sorted.map(function (log) {
            const slot = String(log.slot);
            const card = kept.get(slot) || makeCard(log.slot);
            fillCard(card, log);
            return card;
        });
        logsBox.replaceChildren.apply(logsBox, cards);
        noLogs.hidden = cards.length > 0;
    }

    function showSnapshot(snapshot) {
        showStatus(snapshot.status);
        showQuantities(snapshot.quantities);
        showLogs(snapshot.logs);
        timeLine.textContent = snapshot.time ? "As of " + clockTime(snapshot.time) : "";
        timeLine.dataset.time = snapshot.time || "";
    }

    function connect() {
        let socket;
        try {
            socket = new WebSocket(socketUrl);
        } catch (e) {
            retryLater();
            return;
        }
        socket.onmessage = function (event) {
            retryMs = FirstRetryMs;
            let snapshot;
            try {
                snapshot = JSON.parse(event.data);
            } catch (e) {
                return;
            }
            showSnapshot(snapshot);
        };
        socket.onclose = function () {
            socket.onmessage = null;
            retryLater();
        };
    }

    // Gone: say so at once, and try again after a wait that doubles up to five seconds.
    function retryLater() {
        showState("reconnecting", "Reconnecting...");
        const wait = retryMs;
        retryMs = Math.min(retryMs * 2, LongestRetryMs);
        setTimeout(connect, wait);
    }

    connect();
})();
