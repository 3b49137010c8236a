#include "tests/engine/HostilePages.hpp"

namespace pagora::test {

namespace {

constexpr auto keeping = R"js(
const within = (promise) => Promise.race([promise, new Promise((done, fail) => setTimeout(fail, 1000))]);
const database = () => new Promise((done, fail) => {
    const request = indexedDB.open('kept', 1);
    request.onupgradeneeded = () => request.result.createObjectStore('kept');
    request.onsuccess = () => done(request.result);
    request.onerror = fail;
});
const inDatabase = async (mode, act) => {
    const opened = await database();
    const request = act(opened.transaction('kept', mode).objectStore('kept'));
    const result = await new Promise((done, fail) => { request.onsuccess = () => done(request.result); request.onerror = fail; });
    opened.close();
    return result;
};
const places = {
    cookie: [() => document.cookie, () => document.cookie = 'script=kept; max-age=9999999'],
    local: [() => localStorage.getItem('kept'), () => localStorage.setItem('kept', 'kept')],
    session: [() => sessionStorage.getItem('kept'), () => sessionStorage.setItem('kept', 'kept')],
    name: [() => window.name, () => window.name = 'kept'],
    state: [() => history.state, () => history.replaceState('kept', '')],
    database: [() => inDatabase('readonly', (store) => store.get(1)), () => inDatabase('readwrite', (store) => store.put(1, 1))],
    caches: [() => caches.has('kept'), async () => (await caches.open('kept')).put('{server}x', new Response('kept'))],
    files: [async () => (await navigator.storage.getDirectory()).getFileHandle('kept'),
        async () => (await navigator.storage.getDirectory()).getFileHandle('kept', { create: true })],
    worker: [async () => (await navigator.serviceWorker.getRegistrations()).length,
        () => navigator.serviceWorker.register('worker.js')],
};
const look = async (where) => {
    const found = [];
    for (const [place, [read, write]] of Object.entries(places)) {
        try { if (await within(read())) found.push(place); } catch (error) { }
        try { await within(write()); } catch (error) { }
    }
    try { await (await fetch('{server}asset', { credentials: 'same-origin' })).text(); } catch (error) { }
    await fetch('{server}found/' + where, { method: 'POST', mode: 'no-cors', body: '[' + found.join() + ']' });
};
)js";

constexpr auto prying = R"js(
const names = ['pagoraLoad', 'pagoraLaysOut', 'pagoraShownText', 'pagoraReportPaint', 'rescaling', 'jQuery', '$'];
const pry = (where, how) => {
    for (const name of names)
        if (name in where)
            reached(1, how + name);
    if (where.webkit && where.webkit.messageHandlers && where.webkit.messageHandlers.pagora)
        reached(1, how + 'handler');
};
// Replaces built-in functions that the reader's scripts might call.
for (const [owner, name] of [[Element.prototype, 'getBoundingClientRect'], [Document.prototype, 'getElementById'],
         [window, 'scrollTo'], [window, 'getComputedStyle'], [window, 'requestAnimationFrame'],
         [CSSStyleDeclaration.prototype, 'setProperty'], [Function.prototype, 'call'], [Array.prototype, 'push'],
         [Promise.prototype, 'then'], [EventTarget.prototype, 'addEventListener']]) {
    const own = owner[name];
    owner[name] = function (...parts) {
        const given = [this, ...parts];
        if (given.some((part) => part && typeof part === 'object' && part !== window && 'pagoraLoad' in part))
            reached(1, name);
        return Reflect.apply(own, this, parts);
    };
}
for (const name of ['pagora', 'postMessage', 'pagoraLoad'])
    Object.defineProperty(Object.prototype, name, { configurable: true, set() { reached(1, 'set ' + name); } });
delete Object.prototype.postMessage;
// Inspects the callers of the page's functions.
const caller = (how) => function watch() {
    const from = watch.caller;
    if (from && !String(from).includes('caller'))
        reached(1, how + String(from).slice(0, 80));
};
customElements.define('x-watch', (() => {
    class Watch extends HTMLElement { static observedAttributes = ['style', 'class', 'id']; }
    Watch.prototype.attributeChangedCallback = caller('attribute ');
    return Watch;
})());
for (const type of ['DOMSubtreeModified', 'DOMAttrModified', 'DOMNodeInserted', 'focusin', 'scroll', 'resize', 'error'])
    addEventListener(type, caller(type), true);
new MutationObserver(caller('mutation ')).observe(document, { attributes: true, childList: true, subtree: true });
attack = async () => {
    for (const name of names) {
        const own = Object.getOwnPropertyDescriptor(Object.prototype, name);
        if (own)
            delete Object.prototype[name];
    }
    pry(window, 'page ');
    const frame = element('iframe', {});
    document.body.append(frame);
    pry(frame.contentWindow, 'frame ');
    pry(new frame.contentWindow.Function('return this')(), 'function ');
    const worker = new Worker(URL.createObjectURL(new Blob(['postMessage(Object.getOwnPropertyNames(self).join())'])));
    const inside = await new Promise((done) => { worker.onmessage = (event) => done(event.data); });
    if (inside.includes('pagora'))
        reached(1, 'worker');
    for (const target of [window, parent, top, frame.contentWindow])
        target.postMessage('1 painted 1', '*');
    // Messages in the format of the reader's scripts.
    dispatchEvent(new Event('resize'));
    for (let load = 0; load < 9; ++load)
        try { webkit.messageHandlers.pagora.postMessage(load + ' complete'); reached(1, 'posted'); } catch (error) { }
};
)js";

constexpr auto grabbing = R"js(
const gets = async (how, ask) => {
    try {
        const got = await Promise.race([ask(), new Promise((done, fail) => setTimeout(fail, 300))]);
        if (got)
            await reached(1, how + ' ' + got);
    } catch (error) { }
};
const granted = async (asked) => await asked === 'granted';
attack = async () => {
    if (alert('a') !== undefined || confirm('b') || prompt('c', 'd') !== null)
        reached(1, 'dialog');
    for (let i = 0; i < 5; ++i)
        alert(i) || confirm(i) || prompt(i);
    onbeforeunload = () => 'stay';
    print();
    for (const [url, name, features] of [['about:blank', '_blank', 'popup'], ['', 'x', 'width=100'],
             ['{server}window', 'y', 'noopener=no'], ['javascript:1', '_blank', '']])
        await gets('window', async () => open(url, name, features) && url);
    const link = (attributes) => { const made = element('a', attributes); document.body.append(made); made.click(); };
    link({ href: 'data:application/octet-stream,x', download: 'canary.bin' });
    link({ href: URL.createObjectURL(new Blob(['x'])), download: 'canary.bin' });
    for (const path of ['attached', 'binary'])
        document.body.append(element('iframe', { src: server + path }));
    for (const type of ['file', 'color', 'date']) {
        const input = element('input', { type });
        document.body.append(input);
        input.click();
        await gets('picker', async () => { input.showPicker(); return input.files && input.files.length; });
    }
    const root = document.documentElement;
    const asks = [
        ['full screen', async () => { await root.requestFullscreen(); return document.fullscreenElement; }],
        ['full screen of old', async () => { root.webkitRequestFullscreen(); return document.webkitFullscreenElement; }],
        ['pointer', async () => { await root.requestPointerLock(); return document.pointerLockElement; }],
        ['clipboard', async () => navigator.clipboard.readText()],
        ['clipboard items', async () => (await navigator.clipboard.read()).length],
        ['paste', async () => document.execCommand('paste')],
        ['place', () => new Promise((done, fail) => navigator.geolocation.getCurrentPosition(done, fail))],
        ['notification', () => granted(Notification.requestPermission())],
        ['shown notification', async () => new Promise((done) => { new Notification('x').onshow = done; })],
        ['camera', () => navigator.mediaDevices.getUserMedia({ video: true })],
        ['microphone', () => navigator.mediaDevices.getUserMedia({ audio: true })],
        ['screen', () => navigator.mediaDevices.getDisplayMedia({ video: true })],
        ['devices', async () => (await navigator.mediaDevices.enumerateDevices()).some((device) => device.label)],
        ['music', () => navigator.requestMIDIAccess()],
        ['awake', () => navigator.wakeLock.request('screen')],
        ['share', async () => { await navigator.share({ text: 'x' }); return true; }],
        ['storage', async () => navigator.storage.persist()],
        ['keys', () => navigator.requestMediaKeySystemAccess('org.w3.clearkey', [{}])],
        ['credentials', () => navigator.credentials.get({ password: true })],
        ['picture in picture', async () => element('video', {}).requestPictureInPicture()],
    ];
    for (const name of ['geolocation', 'notifications', 'camera', 'microphone', 'clipboard-read', 'push'])
        asks.push([name, async () => (await navigator.permissions.query({ name })).state === 'granted']);
    for (const name of ['bluetooth', 'hid', 'serial', 'usb', 'xr'])
        asks.push([name, async () => name in navigator]);
    for (const name of ['showOpenFilePicker', 'showSaveFilePicker', 'showDirectoryPicker', 'PaymentRequest',
             'ApplePaySession', 'RTCPeerConnection', 'NDEFReader'])
        asks.push([name, async () => name in window]);
    await Promise.all(asks.map(([how, ask]) => gets(how, ask)));
    moveTo(0, 0);
    resizeTo(9, 9);
};
)js";

std::string script(const std::string& text)
{
    return "<script>//<![CDATA[\n" + text + "\n//]]></script>";
}

}

HostilePage pageThatKeeps()
{
    return { "Keeps",
        script(keeping
            + std::string("attack = async () => { await look('page'); const frame = element('iframe', "
                          "{ src: server + 'frame' }); await new Promise((done) => { "
                          "onmessage = done; document.body.append(frame); }); };")),
        false, { { "worker.js", "onfetch = () => {};" } } };
}

std::string scriptThatKeeps()
{
    return keeping + std::string("look('frame').then(() => parent.postMessage('', '*'));");
}

HostilePage pageThatPries()
{
    return { "Pries", script(prying) + "<x-watch>Watch</x-watch>" };
}

HostilePage pageThatGrabs()
{
    return { "Grabs",
        script(grabbing) + "<button id='grab' onclick='attack().then(() => tell(\"over\"))'>Grab</button>" };
}

}
