// Places as the database counts them (z up, in metres) and as glTF does (y up).

import { Vector3 } from "three";

export const fromDatabase = (x, y, z) => new Vector3(x, z, -y);

export const toDatabase = ({ x, y, z }) => [x, -z, y];
