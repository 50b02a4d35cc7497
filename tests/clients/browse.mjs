// usage: node browse.mjs CHROMIUM PAGE-FOLDER FILE.glb
// Opens the page of examples/variants in a headless browser, presses each of its buttons, and prints as one JSON object
// how many points of the picture are not white at first ("") and after each button.
// Exit code: 0 done, 2 no result within a minute.
import { spawn } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { join, dirname, extname } from 'node:path';
import { fileURLToPath } from 'node:url';

const [chromium, pages, model] = process.argv.slice(2);
const modules = join(dirname(fileURLToPath(import.meta.url)), 'node_modules');
const types = { '.html': 'text/html', '.js': 'text/javascript' };

// Runs in the page.
async function press() {
    const waitFor = async (done) => {
        while (!done()) await new Promise((resolve) => setTimeout(resolve, 20));
    };
    const canvas = document.getElementById('picture');
    await waitFor(() => canvas.dataset.shown === '');
    const count = () => {
        const copy = document.createElement('canvas');
        [copy.width, copy.height] = [canvas.width, canvas.height];
        const context = copy.getContext('2d');
        context.drawImage(canvas, 0, 0);
        const colors = context.getImageData(0, 0, copy.width, copy.height).data;
        const sum = { points: 0, red: 0, green: 0, blue: 0 };
        for (let i = 0; i < colors.length; i += 4) {
            const [red, green, blue] = [colors[i], colors[i + 1], colors[i + 2]];
            if (red + green + blue > 760) continue;
            ++sum.points;
            if (red > green + 40 && red > blue + 40) ++sum.red;
            if (green > red + 40 && green > blue + 40) ++sum.green;
            if (blue > red + 40 && blue > green + 40) ++sum.blue;
        }
        return sum;
    };
    const seen = { '': count() };
    for (const button of document.querySelectorAll('button')) {
        button.click();
        await waitFor(() => canvas.dataset.shown === button.textContent);
        seen[button.textContent] = count();
    }
    await fetch('/result', { method: 'POST', body: JSON.stringify(seen) });
}

function contentOf(path) {
    if (path === '/model.glb') return readFileSync(model);
    if (path.startsWith('/node_modules/')) return readFileSync(join(modules, path.slice(14)));
    const content = readFileSync(join(pages, path));
    return path === '/index.html' ? content + `<script>(${press})()</script>` : content;
}

const profile = mkdtempSync(join(tmpdir(), 'zn-browser-'));
let browser;
function end(exitCode) {
    browser?.once('exit', () => {
        rmSync(profile, { recursive: true, force: true, maxRetries: 5 });
        process.exit(exitCode);
    });
    browser?.kill();
}

const server = createServer((request, response) => {
    const path = new URL(request.url, 'http://localhost').pathname;
    if (path === '/result') {
        let body = '';
        request.on('data', (part) => (body += part));
        request.on('end', () => {
            console.log(body);
            response.end();
            end(0);
        });
        return;
    }
    try {
        const content = contentOf(path);
        response.setHeader('Content-Type', types[extname(path)] ?? 'application/octet-stream');
        response.end(content);
    } catch {
        response.writeHead(404).end();
    }
});
server.listen(0, '127.0.0.1', () => {
    const address = `http://127.0.0.1:${server.address().port}/index.html?file=model.glb`;
    const options = ['--headless=new', '--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'];
    browser = spawn(chromium, [...options, `--user-data-dir=${profile}`, address], { stdio: 'ignore' });
    browser.on('error', () => process.exit(2));
});
setTimeout(() => end(2), 60000);
