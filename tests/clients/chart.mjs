// usage: node chart.mjs CHROMIUM CHART.json LIGHT.hdr PICTURE.png
// Draws balls with physically based materials in a headless browser with the package three: without tone mapping, in
// the light of the environment, looked at from the front (-Y, where Z is up) by a parallel projection.
// CHART.json: width and height of the picture, half of the height that it shows, and of each of the balls x, z, radius,
// color (display), metalness, roughness and clearcoat.
// Exit code: 0 done, 2 no result within two minutes.
import { spawn } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { tmpdir } from 'node:os';
import { join, dirname } from 'node:path';
import { fileURLToPath } from 'node:url';

const [chromium, chart, light, picture] = process.argv.slice(2);
const modules = join(dirname(fileURLToPath(import.meta.url)), 'node_modules');

const page = `<!DOCTYPE html>
<script type="importmap">
{ "imports": { "three": "./node_modules/three/build/three.module.js",
               "three/addons/": "./node_modules/three/examples/jsm/" } }
</script>
<script type="module">
import * as THREE from 'three';
import { HDRLoader } from 'three/addons/loaders/HDRLoader.js';

const chart = await (await fetch('chart.json')).json();
const renderer = new THREE.WebGLRenderer({ antialias: true, preserveDrawingBuffer: true });
renderer.setSize(chart.width, chart.height, false);
renderer.toneMapping = THREE.NoToneMapping;
const light = await new HDRLoader().setDataType(THREE.FloatType).loadAsync('light.hdr');
light.mapping = THREE.EquirectangularReflectionMapping;
const scene = new THREE.Scene();
scene.background = new THREE.Color(0x808080);
scene.environment = new THREE.PMREMGenerator(renderer).fromEquirectangular(light).texture;
for (const ball of chart.balls) {
    const material = new THREE.MeshPhysicalMaterial({ metalness: ball.metalness, roughness: ball.roughness,
                                                      clearcoat: ball.clearcoat });
    material.color.setRGB(...ball.color, THREE.SRGBColorSpace);
    const mesh = new THREE.Mesh(new THREE.SphereGeometry(ball.radius, 128, 64), material);
    mesh.position.set(ball.x, ball.z, 0);
    scene.add(mesh);
}
const high = chart.halfHeight, wide = high * chart.width / chart.height;
const camera = new THREE.OrthographicCamera(-wide, wide, high, -high, 1, 1000);
camera.position.z = 500;
renderer.render(scene, camera);
await fetch('/result', { method: 'POST', body: renderer.domElement.toDataURL('image/png') });
</script>`;

function contentOf(path) {
    if (path === '/index.html') return page;
    if (path === '/chart.json') return readFileSync(chart);
    if (path === '/light.hdr') return readFileSync(light);
    return readFileSync(join(modules, path.replace('/node_modules/', '')));
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

const types = { html: 'text/html', js: 'text/javascript' };
const server = createServer((request, response) => {
    const path = new URL(request.url, 'http://localhost').pathname;
    if (path === '/result') {
        let body = '';
        request.on('data', (part) => (body += part));
        request.on('end', () => {
            writeFileSync(picture, Buffer.from(body.slice(body.indexOf(',') + 1), 'base64'));
            response.end();
            end(0);
        });
        return;
    }
    try {
        const content = contentOf(path);
        response.setHeader('Content-Type', types[path.split('.').pop()] ?? 'application/octet-stream');
        response.end(content);
    } catch {
        response.writeHead(404).end();
    }
});
server.listen(0, '127.0.0.1', () => {
    const address = `http://127.0.0.1:${server.address().port}/index.html`;
    const options = ['--headless=new', '--no-sandbox', '--use-angle=swiftshader', '--enable-unsafe-swiftshader'];
    browser = spawn(chromium, [...options, `--user-data-dir=${profile}`, address], { stdio: 'ignore' });
    browser.on('error', () => process.exit(2));
});
setTimeout(() => end(2), 110000);
